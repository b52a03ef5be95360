#ifndef VELKPLANNING_STATECHANGE_H
#define VELKPLANNING_STATECHANGE_H

#include <velkplanning/VelkPlanningExport.h>

#include <velk/switching/SwitchingModel.h>

#include <QList>

#include <vector>

namespace Velk {

/// What is switched, and meant to conduct, at a time.
struct SwitchedState
{
    std::vector<int> positions; ///< of all gangs
    std::vector<int> through;   ///< passives that groups go through, by their positions in the model
};

/// Pins that may touch for a moment.
struct Transient
{
    bool isOnTheWayToRest;    ///< while gangs go to rest; else while others leave it
    QList<InterfacePin> pins; ///< all that are tied together then, by reference, then number
    std::vector<int> gangs;   ///< that move and have a contact in it, ascending
};

/// From one state to the next. First all gangs that leave their position go to rest, then those that do not stay there
/// go to their new one.
struct StateChange
{
    std::vector<int> toRest; ///< gangs, ascending
    std::vector<int> toSet;  ///< gangs, ascending; some may be in both
    /// For any order in which the gangs of each half move: sets that hold two pins of interfaces which are tied
    /// together neither before nor after. Those of the first half come first, then by their pins.
    QList<Transient> transients;
};

/// What happens between two states of the model.
VELKPLANNING_EXPORT StateChange changeBetween(const SwitchingModel &model, const SwitchedState &before,
                                              const SwitchedState &after);
}

#endif
