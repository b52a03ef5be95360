#ifndef VELKPLANNING_PLANFACTS_H
#define VELKPLANNING_PLANFACTS_H

#include <velkplanning/ConnectionPlan.h>
#include <velkplanning/ConnectionRequest.h>
#include <velkplanning/PlanExtents.h>

#include <velk/switching/Connectivity.h>

#include <vector>

namespace Velk {

/// What extents touch besides the pins that were asked for.
class PlanFacts
{
public:
    /// A relay of unknown positions that touches an extent.
    struct TouchingRelay
    {
        int component;
        std::vector<int> groups; ///< whose extents it touches, ascending
        bool touchesOthers; ///< a net that is connected with a pin of an interface in no extent, not an allowed one
    };

    /// \a atRest is the state of all relays at rest. It has to stay.
    PlanFacts(const ConnectionRequest &request, const Connectivity &atRest);

    /// Pins of interfaces in the extent of the group, but not on a net that was asked for: those that it may reach, or
    /// the others.
    QList<InterfacePin> sidePins(const PlanExtents &extents, int group, bool areAllowed) const;
    QList<PlannedCoupling> couplings(const PlanExtents &extents) const;
    /// Pins in no extent that are connected with one another, but not all of them at rest.
    QList<QList<InterfacePin>> newlyConnected(const PlanExtents &extents) const;
    std::vector<TouchingRelay> touchingRelays(const PlanExtents &extents) const; ///< by component

private:
    struct UnknownRelay
    {
        int component;
        std::vector<int> nets; ///< that it may connect
    };

    const InterfacePin &pinOf(int number) const;
    QList<InterfacePin> pinsOf(std::vector<int> numbers) const;
    const std::vector<int> &pinsAt(int net) const { return pinsOfNets[static_cast<std::size_t>(net)]; }
    bool isAllowed(int pin) const { return allowedPins[static_cast<std::size_t>(pin)]; }
    QList<InterfacePin> freePinsOf(const CoupledSets &coupled, const PlanExtents &extents) const;

    const Connectivity &rest;
    // Interface pins, by their positions in the model.
    std::vector<std::vector<int>> pinsOfNets;
    std::vector<bool> allowedPins; ///< of each, whether any group may reach it
    std::vector<UnknownRelay> unknownRelays;
};
}

#endif
