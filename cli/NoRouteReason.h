#ifndef VELK_CLI_NOROUTEREASON_H
#define VELK_CLI_NOROUTEREASON_H

#include "cli/NetlistReach.h"
#include "cli/commands/RouteEnd.h"

#include <velk/routing/Routing.h>

#include <functional>

namespace VelkCli {

/// The two limits of a search, as Velk::Routing has them.
struct RouteLimits
{
    int switches;
    int connections;
};

/// A search that found nothing.
struct VainSearch
{
    const Velk::EDAProvider &netlist;
    Velk::Routing routing;
    RouteEnd source;
    RouteEnd destination;
    RouteLimits limits;
    SearchedTypes types;
};

/// Limits with which there is a route, the least of their kind, and how much the first such route has.
struct WiderLimits
{
    RouteLimits limits;
    qsizetype switches;
    qsizetype connections;
};

/// Why there is no route, as far as it is known.
struct NoRouteReason
{
    bool isComplete = false; ///< false where it would have taken long
    QString failure;         ///< why nothing could be found out; mostly empty
    qsizetype shortest = -1; ///< the switches of the shortest chain; -1 if there is none, or none is known
    // Where there is a chain:
    QList<WiderLimits> widerLimits;
    // Where there is none:
    bool isInOtherDirection = false; ///< from the destination to the source there is one
    Reach fromSource;
    Reach fromDestination;
    QList<QSharedPointer<Velk::EDAComponent>> between; ///< as NetlistReach::componentsBetween()
};

/// Whether any limits would let a route be found.
bool isConnected(const VainSearch &search);

/// For ends that are connected: more switches, if that alone is enough; more connections, if that alone is enough; else
/// both, with as few switches as a route can have. Each is proved by a search.
QList<WiderLimits> widerLimits(const VainSearch &search);

/// Calls \a tell with why there is no route. What is not known after some seconds is left out, and the process then
/// ended with this exit status, since the search cannot be called off. Switches the trace off.
void explainNoRoute(const VainSearch &search, int exitStatus, const std::function<void(const NoRouteReason &)> &tell);
}

#endif
