#ifndef VELKPLANNING_SATSOLVER_H
#define VELKPLANNING_SATSOLVER_H

#include <velkplanning/PlanningTime.h>

#include <cstddef>
#include <initializer_list>
#include <memory>
#include <vector>

namespace CaDiCaL {
class Solver;
}

namespace Velk {

/// Clauses over variables, and whether something satisfies them all. A literal is the number of a variable, or its
/// negative for the opposite.
class SatSolver
{
public:
    enum class Answer
    {
        Satisfied,
        Impossible,
        NotKnown, ///< the time was up, or it took too much effort
    };

    enum class Effort
    {
        Little, ///< gives up where it takes long
        Any,
    };

    static constexpr int yes = 1; ///< a literal that is always true; -yes is always false

    /// The time has to stay.
    explicit SatSolver(const PlanningTime &time);
    ~SatSolver();
    SatSolver(const SatSolver &) = delete;
    SatSolver &operator=(const SatSolver &) = delete;

    int newVariable() { return ++lastVariable; }
    /// At least one of the literals is true.
    void addClause(std::initializer_list<int> literals) { addClause(literals.begin(), literals.size()); }
    void addClause(const std::vector<int> &literals) { addClause(literals.data(), literals.size()); }
    /// If \a premise is true, then \a conclusion is.
    void addImplication(int premise, int conclusion) { addClause({-premise, conclusion}); }
    /// If \a premise is true, then at least one of the literals is.
    void addAnyOf(int premise, std::vector<int> literals);
    /// Both are true or none is, if \a premise is true.
    void addEquality(int premise, int literal, int other);
    void addAtMostOne(const std::vector<int> &literals);
    void addAtMost(int count, const std::vector<int> &literals);
    /// Tries this value first.
    void prefer(int literal);

    Answer solve(Effort effort);
    /// Whether it is true in what solve() has found.
    bool isTrue(int literal) const;

private:
    void addClause(const int *literals, std::size_t count);

    const PlanningTime &time;
    std::unique_ptr<CaDiCaL::Solver> solver;
    int lastVariable = yes;
};
}

#endif
