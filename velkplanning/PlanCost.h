#ifndef VELKPLANNING_PLANCOST_H
#define VELKPLANNING_PLANCOST_H

#include <array>

namespace Velk {

/// How much of what a plan is to have little of, the most important first. Compared in that order.
enum PlanCostLevel
{
    ChangedGangs, ///< none where it does not matter how many change
    GangsAway,
    PassivesThrough,
    PlanCostLevels
};

using PlanCost = std::array<int, PlanCostLevels>;
}

#endif
