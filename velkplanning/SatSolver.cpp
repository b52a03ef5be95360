#include <velkplanning/SatSolver.h>

#include <cadical.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdlib>

namespace Velk {

namespace {

/// Asked by the solver now and then.
class SolverStop : public CaDiCaL::Terminator
{
public:
    explicit SolverStop(const PlanningTime &planningTime)
        : time(planningTime)
    {
    }

    bool terminate() override { return time.isUp(); }

private:
    const PlanningTime &time;
};
}

SatSolver::SatSolver(const PlanningTime &planningTime)
    : time(planningTime)
    , solver(std::make_unique<CaDiCaL::Solver>())
{
    solver->set("quiet", 1); // it tells on standard output what it has found out in between
    solver->set("phase", 0); // most of what could be used is not
    addClause({yes});
}

SatSolver::~SatSolver() = default;

void SatSolver::addClause(const int *literals, std::size_t count)
{
    const int *const end = literals + count;
    if (count > 1 && std::find(literals, end, int(yes)) != end)
        return;
    for (const int *literal = literals; literal != end; ++literal) {
        if (*literal != -yes)
            solver->add(*literal);
    }
    solver->add(0);
}

void SatSolver::addAnyOf(int premise, std::vector<int> literals)
{
    literals.push_back(-premise);
    addClause(literals);
}

void SatSolver::addEquality(int premise, int literal, int other)
{
    if (literal == other)
        return;
    addClause({-premise, -literal, other});
    addClause({-premise, literal, -other});
}

void SatSolver::addAtMostOne(const std::vector<int> &literals)
{
    constexpr std::size_t fewEnoughForPairs = 6;
    if (literals.size() > fewEnoughForPairs) {
        addAtMost(1, literals);
        return;
    }
    for (std::size_t i = 0; i < literals.size(); ++i) {
        for (std::size_t j = i + 1; j < literals.size(); ++j)
            addClause({-literals[i], -literals[j]});
    }
}

// A row of counts, from one literal to the next: counts[i] says that more than i of those so far are true.
void SatSolver::addAtMost(int count, const std::vector<int> &literals)
{
    std::vector<int> counts(static_cast<std::size_t>(count), -yes);
    for (const int literal : literals) {
        addClause({-literal, counts.empty() ? -yes : -counts.back()});
        for (std::size_t i = counts.size(); i > 0; --i) {
            const int before = i > 1 ? counts[i - 2] : yes;
            if (before == -yes)
                continue;
            const int raised = newVariable();
            addClause({-literal, -before, raised});
            addClause({-counts[i - 1], raised});
            counts[i - 1] = raised;
        }
    }
}

void SatSolver::prefer(int literal)
{
    solver->phase(literal);
}

SatSolver::Answer SatSolver::solve(Effort effort)
{
    constexpr int fewConflicts = 2000;
    constexpr int satisfied = 10;
    constexpr int impossible = 20;
    SolverStop stop(time);
    solver->connect_terminator(&stop);
    if (effort == Effort::Little)
        solver->limit("conflicts", fewConflicts);
    const int answer = time.isUp() ? 0 : solver->solve();
    solver->disconnect_terminator();
    if (answer == satisfied)
        return Answer::Satisfied;
    return answer == impossible ? Answer::Impossible : Answer::NotKnown;
}

bool SatSolver::isTrue(int literal) const
{
    // Of a negative literal versions of the solver tell different things.
    return (solver->val(std::abs(literal)) > 0) == (literal > 0);
}
}
