#ifndef VELKPLANNING_PLANPARTS_H
#define VELKPLANNING_PLANPARTS_H

#include <velkplanning/ConnectionGroups.h>

#include <velk/switching/Connectivity.h>

#include <QList>

#include <vector>

namespace Velk {

/// What could be left out of a plan: a gang away from rest that stays at rest instead, or a passive that a group does
/// not go through. The other numbers are none.
struct PlanPart
{
    int gang;
    int group;
    int passive;
};

/// For each part, whether without it, but with all others, the pins of each group are tied together; also if it is
/// by passives that another group goes through. That is quicker than to look at a state for each part: it takes time
/// almost in proportion to all contacts, and to the number of parts times that of the pins.
std::vector<bool> areTiedWithout(const std::vector<PlanPart> &parts, const Connectivity &state,
                                 const QList<ConnectionGroup> &groups);
}

#endif
