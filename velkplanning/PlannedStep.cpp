#include <velkplanning/PlannedStep.h>

#include <algorithm>
#include <utility>

namespace Velk {

namespace {

SwitchedState stateOf(const ConnectionPlan &plan)
{
    SwitchedState state{plan.positions, {}};
    for (const PlannedGroup &group : plan.groups)
        state.through.insert(state.through.end(), group.through.begin(), group.through.end());
    std::sort(state.through.begin(), state.through.end()); // no passive belongs to two groups
    return state;
}
}

PlannedStep planStep(const ConnectionPlanner &planner, const ConnectionRequest &request, SwitchedState &state,
                     const PlanningLimits &limits)
{
    PlannedStep step{planner.plan(request, state.positions, limits), {}, {}};
    if (step.plan.result != PlanResult::Optimal && step.plan.result != PlanResult::Feasible)
        return step;
    const SwitchedState before = std::exchange(state, stateOf(step.plan));
    step.ways = waysOf(planner.model(), request, step.plan);
    step.change = changeBetween(planner.model(), before, state);
    return step;
}
}
