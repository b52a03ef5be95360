#ifndef VELKPLANNING_PLANNEDSTEP_H
#define VELKPLANNING_PLANNEDSTEP_H

#include <velkplanning/ConnectionPlanner.h>
#include <velkplanning/ConnectionWays.h>
#include <velkplanning/StateChange.h>
#include <velkplanning/VelkPlanningExport.h>

#include <QList>

namespace Velk {

/// A step of a sequence of requests, in which the relays stay as they are from one to the next.
struct PlannedStep
{
    ConnectionPlan plan;       ///< or why there is none
    QList<ConnectionWay> ways; ///< of each connection; none without a plan
    StateChange change;        ///< from the step before; nothing without a plan
};

/// Plans \a request while the relays are in \a state, which is then that of the plan. Without a plan it stays: the
/// relays are left as they were. A sequence begins with position 0 of all gangs. Throws what ConnectionPlanner::plan()
/// throws.
VELKPLANNING_EXPORT PlannedStep planStep(const ConnectionPlanner &planner, const ConnectionRequest &request,
                                         SwitchedState &state, const PlanningLimits &limits = {});
}

#endif
