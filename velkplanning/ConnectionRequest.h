#ifndef VELKPLANNING_CONNECTIONREQUEST_H
#define VELKPLANNING_CONNECTIONREQUEST_H

#include <velk/switching/ExpectedConnections.h>

#include <QList>

#include <vector>

namespace Velk {

/// Which plan is the best.
enum class PlanAim
{
    FewestAway,   ///< the fewest gangs away from rest, then the fewest passive components gone through
    FewestChanges ///< the fewest gangs that leave the position from before, then as above
};

/// Connections that are to be there at once, and what they have to keep out of. Numbers are those of the
/// SwitchingModel that it is planned on. A plain value.
struct ConnectionRequest
{
    /// Between pins of any components, each on a net that has a name. None is a request too: nothing is to be
    /// connected. Connections that share a net, directly or over others, are one group.
    QList<ExpectedConnection> connections;
    /// Relays that stay at rest with all of their gang, and passives that no group goes through. What other components
    /// are among them changes nothing.
    std::vector<int> excludedComponents = {};
    std::vector<int> excludedNets = {};      ///< that no group may reach, unless a pin of it lies there
    std::vector<int> allowedComponents = {}; ///< interfaces whose pins any group may reach
    bool allowsSideConnections = false;      ///< groups may reach the pins of all interfaces
    bool forbidsCouplings = false;           ///< no passive components may couple two groups
    bool trustsUnknown = false;              ///< relays whose positions are not known connect nothing
    PlanAim aim = PlanAim::FewestAway;       ///< of all plans, which one is wanted
};
}

#endif
