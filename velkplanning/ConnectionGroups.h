#ifndef VELKPLANNING_CONNECTIONGROUPS_H
#define VELKPLANNING_CONNECTIONGROUPS_H

#include <velkplanning/VelkPlanningExport.h>

#include <velk/switching/ExpectedConnections.h>

#include <QList>

#include <vector>

namespace Velk {

/// Connections that share a net, directly or over others.
struct ConnectionGroup
{
    std::vector<int> connections; ///< by their positions, ascending
    QList<InterfacePin> pins;     ///< that were asked for, each once, by reference, then number
    std::vector<int> nets;        ///< of these pins, ascending
};

/// Those of connections on a model with so many nets, in the order of their first connections.
VELKPLANNING_EXPORT QList<ConnectionGroup> groupsOf(const QList<ExpectedConnection> &connections, int netCount);
}

#endif
