#ifndef VELKPLANNING_SCARCENETS_H
#define VELKPLANNING_SCARCENETS_H

#include <velkplanning/PlanProblem.h>

#include <vector>

namespace Velk {

/// Nets of which each group needs one at least, while there are fewer of them than groups; ascending. So there is no
/// plan. Empty where none were found, which does not mean that there are enough.
///
/// For two pins of each group as many ways as possible are sought that have no net in common, no matter which pin each
/// leads to. Where they are fewer than groups, as many nets lie across all of them.
std::vector<int> scarceNetsOf(const PlanProblem &problem);
}

#endif
