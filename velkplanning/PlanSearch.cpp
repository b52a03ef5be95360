#include <velkplanning/PlanSearch.h>

#include <velkplanning/PlanEncoding.h>
#include <velkplanning/ScarceNets.h>

#include <algorithm>
#include <climits>
#include <functional>

namespace Velk {

namespace {

constexpr int anyNumber = INT_MAX;

bool isPlan(const PlanProblem &problem, const PlanDraft &draft)
{
    return DraftState(problem, draft).isPlan();
}

bool isWithin(const PlanCost &cost, const PlanCost &budget)
{
    return std::equal(cost.cbegin(), cost.cend(), budget.cbegin(), std::less_equal<>());
}
}

PlanSearch::PlanSearch(const PlanProblem &planProblem, const PlanningTime &planningTime)
    : problem(planProblem)
    , time(planningTime)
    , costs(planProblem)
{
}

// Mostly there is a plan in which each connection takes a shortest way. To look for it first leaves few relays to be
// looked at.
PlanResult PlanSearch::findAny()
{
    if (costs.brokenGroup() != PlanProblem::none || !scarceNetsOf(problem).empty())
        return PlanResult::Impossible;
    PlanCost budget = {anyNumber, anyNumber, anyNumber};
    const auto firstLevel = problem.request.aim == PlanAim::FewestChanges ? ChangedGangs : GangsAway;
    budget[firstLevel] = costs.least()[firstLevel];
    auto answer = findWithin(budget, SatSolver::Effort::Little);
    if (answer != SatSolver::Answer::Satisfied) {
        budget[firstLevel] = anyNumber;
        answer = findWithin(budget, SatSolver::Effort::Any);
    }
    if (answer == SatSolver::Answer::Satisfied)
        return PlanResult::Feasible;
    return answer == SatSolver::Answer::Impossible ? PlanResult::Impossible : PlanResult::Unknown;
}

PlanResult PlanSearch::improve()
{
    const PlanCost least = costs.least();
    PlanCost budget = {anyNumber, anyNumber, anyNumber};
    for (const auto level : {ChangedGangs, GangsAway, PassivesThrough}) {
        while (costOf(*best) > least && costOf(*best)[level] > 0) {
            budget[level] = costOf(*best)[level] - 1;
            const auto answer = findWithin(budget, SatSolver::Effort::Any);
            if (answer == SatSolver::Answer::NotKnown)
                return PlanResult::Feasible;
            if (answer == SatSolver::Answer::Impossible)
                break;
        }
        budget[level] = costOf(*best)[level];
    }
    return PlanResult::Optimal;
}

SatSolver::Answer PlanSearch::findWithin(const PlanCost &budget, SatSolver::Effort effort)
{
    if (budget < costs.least())
        return SatSolver::Answer::Impossible;
    PlanEncoding encoding(problem, costs, budget, time);
    while (true) {
        const auto answer = encoding.solve(effort);
        if (answer != SatSolver::Answer::Satisfied)
            return answer;
        PlanDraft draft = encoding.draft();
        while (leaveOutNeedless(draft)) {
        }
        const PlanCost cost = costOf(draft);
        if (!best || cost < costOf(*best))
            best = draft;
        if (isWithin(cost, budget))
            return answer;
        encoding.limitCosts(cost);
    }
}

PlanCost PlanSearch::costOf(const PlanDraft &draft) const
{
    return costs.costOf(draft.positions, static_cast<int>(draft.through.size()));
}

/// Whether it has found something.
bool PlanSearch::leaveOutNeedless(PlanDraft &draft) const
{
    bool isChanged = false;
    for (std::size_t gang = 0; gang < draft.positions.size(); ++gang) {
        if (draft.positions[gang] == 0 && problem.usualPosition(static_cast<int>(gang)) == 0)
            continue;
        for (const int position : {problem.usualPosition(static_cast<int>(gang)), 0}) {
            PlanDraft without = draft;
            without.positions[gang] = position;
            if (costOf(without) < costOf(draft) && isPlan(problem, without)) {
                draft = without;
                isChanged = true;
            }
        }
    }
    for (std::size_t i = draft.through.size(); i-- > 0;) {
        PlanDraft without = draft;
        without.through.erase(without.through.begin() + static_cast<std::ptrdiff_t>(i));
        if (isPlan(problem, without)) {
            draft = without;
            isChanged = true;
        }
    }
    return isChanged;
}
}
