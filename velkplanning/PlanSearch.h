#ifndef VELKPLANNING_PLANSEARCH_H
#define VELKPLANNING_PLANSEARCH_H

#include <velkplanning/ConnectionPlan.h>
#include <velkplanning/PlanDraft.h>
#include <velkplanning/PlanProblem.h>
#include <velkplanning/PlanningTime.h>
#include <velkplanning/SatSolver.h>
#include <velkplanning/WayCosts.h>

#include <optional>

namespace Velk {

/// Looks for the best plan of a problem.
class PlanSearch
{
public:
    /// The problem and the time have to stay.
    PlanSearch(const PlanProblem &planProblem, const PlanningTime &planningTime);

    /// Any plan; without one Impossible or Unknown.
    PlanResult findAny();
    /// The best one, after findAny() has found one: Optimal, or Feasible where the time was up.
    PlanResult improve();
    /// The best so far.
    const PlanDraft &draft() const { return *best; }

private:
    SatSolver::Answer findWithin(const PlanCost &budget, SatSolver::Effort effort);
    PlanCost leastOfFirstLevel() const;
    PlanCost costOf(const PlanDraft &draft) const;
    void leaveOutNeedless(PlanDraft &draft) const;
    bool leaveOutGangs(PlanDraft &draft) const;
    bool leaveOutPassives(PlanDraft &draft) const;

    const PlanProblem &problem;
    const PlanningTime &time;
    WayCosts costs;
    std::optional<PlanDraft> best;
};
}

#endif
