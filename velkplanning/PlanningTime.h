#ifndef VELKPLANNING_PLANNINGTIME_H
#define VELKPLANNING_PLANNINGTIME_H

#include <velkplanning/ConnectionPlanner.h>

#include <chrono>

namespace Velk {

/// The time that a plan may take, which begins when this is made.
class PlanningTime
{
public:
    explicit PlanningTime(const PlanningLimits &planningLimits)
        : limits(planningLimits)
        , begin(std::chrono::steady_clock::now())
    {
    }

    /// Once it is up, it stays so: whoever calls off need not do so again.
    bool isUp() const
    {
        isOver = isOver || (limits.time && std::chrono::steady_clock::now() - begin >= *limits.time) ||
                 (limits.isCalledOff && limits.isCalledOff());
        return isOver;
    }

private:
    const PlanningLimits &limits;
    const std::chrono::steady_clock::time_point begin;
    mutable bool isOver = false;
};
}

#endif
