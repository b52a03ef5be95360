#include <velkplanning/PlanSearch.h>

#include <velkplanning/PlanEncoding.h>
#include <velkplanning/ScarceNets.h>

#include <algorithm>
#include <climits>
#include <functional>

namespace Velk {

namespace {

constexpr PlanCost anyCost = {INT_MAX, INT_MAX, INT_MAX};

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
    PlanEncoding overShortest(problem, costs, leastOfFirstLevel(), time);
    if (overShortest.solve(SatSolver::Effort::Little) == SatSolver::Answer::Satisfied) {
        best = overShortest.draft();
        return PlanResult::Feasible;
    }
    PlanEncoding overAll(problem, costs, anyCost, time);
    const auto answer = overAll.solve(SatSolver::Effort::Any);
    if (answer == SatSolver::Answer::Satisfied) {
        best = overAll.draft();
        return PlanResult::Feasible;
    }
    return answer == SatSolver::Answer::Impossible ? PlanResult::Impossible : PlanResult::Unknown;
}

PlanResult PlanSearch::improve()
{
    leaveOutNeedless(*best);
    if (costOf(*best) > costs.least()) {
        costs.chargeCrowding();
        findWithin(leastOfFirstLevel(), SatSolver::Effort::Little);
    }
    const PlanCost least = costs.least();
    PlanCost budget = anyCost;
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

/// The least of what matters most, and of all else as much as there is.
PlanCost PlanSearch::leastOfFirstLevel() const
{
    const auto firstLevel = problem.request.aim == PlanAim::FewestChanges ? ChangedGangs : GangsAway;
    PlanCost budget = anyCost;
    budget[firstLevel] = costs.least()[firstLevel];
    return budget;
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
        const PlanCost costAsFound = costOf(draft); // to leave out what is needless may cost more of what matters less
        leaveOutNeedless(draft);
        const PlanCost cost = costOf(draft);
        if (cost < costOf(*best))
            best = draft;
        if (isWithin(costAsFound, budget) || isWithin(cost, budget))
            return answer;
        encoding.limitCosts(costAsFound);
    }
}

PlanCost PlanSearch::costOf(const PlanDraft &draft) const
{
    return costs.costOf(draft.positions, static_cast<int>(draft.through.size()));
}

// Without one gang or passive others may become needless.
void PlanSearch::leaveOutNeedless(PlanDraft &draft) const
{
    while (costOf(draft) > costs.least() && (leaveOutGangs(draft) || leaveOutPassives(draft))) {
    }
}

bool PlanSearch::leaveOutGangs(PlanDraft &draft) const
{
    bool isChanged = false;
    for (std::size_t gang = 0; gang < draft.positions.size(); ++gang) {
        const int usual = problem.usualPosition(static_cast<int>(gang));
        for (const int position : {usual, 0}) {
            const int taken = draft.positions[gang];
            if (costs.costOf(static_cast<int>(gang), position) >= costs.costOf(static_cast<int>(gang), taken))
                continue;
            draft.positions[gang] = position;
            if (isPlan(problem, draft))
                isChanged = true;
            else
                draft.positions[gang] = taken;
        }
    }
    return isChanged;
}

bool PlanSearch::leaveOutPassives(PlanDraft &draft) const
{
    bool isChanged = false;
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
