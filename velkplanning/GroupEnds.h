#ifndef VELKPLANNING_GROUPENDS_H
#define VELKPLANNING_GROUPENDS_H

#include <velkplanning/PlanProblem.h>

#include <vector>

namespace Velk {

/// Two nets of a group that are to be tied together, or one twice where it has no other.
struct GroupEnds
{
    int source;
    int target;

    bool operator==(const GroupEnds &other) const { return source == other.source && target == other.target; }
};

/// Of each group the ends of its first connection between two nets, as it was asked for.
std::vector<GroupEnds> endsAsGiven(const PlanProblem &problem);

/// The same, but turned so that each component is on one side, as far as that goes: people do not care which end of a
/// connection comes first.
std::vector<GroupEnds> endsBySide(const PlanProblem &problem);

/// The same, but turned so that what is nearer to the first source, over links of any position, is a source: so also
/// connections between pins of one connector.
std::vector<GroupEnds> endsByNearness(const PlanProblem &problem);
}

#endif
