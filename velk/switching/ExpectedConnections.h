#ifndef VELK_SWITCHING_EXPECTEDCONNECTIONS_H
#define VELK_SWITCHING_EXPECTEDCONNECTIONS_H

#include <velk/VelkExport.h>
#include <velk/switching/Connectivity.h>
#include <velk/switching/SwitchingModel.h>

#include <QList>
#include <QStringList>

namespace Velk {

/// A connection that is meant to be, between pins of any components, which lie on nets.
struct ExpectedConnection
{
    InterfacePin from; ///< one of the two pins
    InterfacePin to;   ///< the other one
};

/// A connection that is there, but not by contacts alone.
struct ConnectionThroughPassives
{
    int connection;       ///< by its position among those expected
    QStringList passives; ///< that lead on, sorted: as few as possible, and such that touch nothing else if there are
};

/// Pins that are tied together though they are to be apart.
struct ShortCircuit
{
    /// Those that belong together by themselves: the pins of one group of connections, or pins that are connected when
    /// all is at rest. Sorted by reference, then by number; the sets by their pins.
    QList<QList<InterfacePin>> sets;
    QStringList relays; ///< away from rest whose closed contacts are part of it, sorted
};

/// How a state differs from what is expected of it.
struct ComparedConnections
{
    QList<int> missing;                       ///< connections by their positions, ascending
    QList<ConnectionThroughPassives> through; ///< in the order of the connections
    QList<ShortCircuit> shorts;               ///< by their sets
};

/// Compares what \a state connects with the connections that are expected of it. \a atRest is the same model with all
/// relays at rest.
///
/// Connections that share a net, directly or over others, are one group. A connection is there if closed contacts tie
/// its ends together, or these and passive components that are ways, over which its group then reaches. Short is what
/// ties two groups together, or a group and an interface pin that is neither one of its pins nor on the net of one, or
/// interface pins of no group that are not connected at rest.
VELK_EXPORT ComparedConnections compareConnections(const Connectivity &state, const Connectivity &atRest,
                                                   const QList<ExpectedConnection> &expected);
}

#endif
