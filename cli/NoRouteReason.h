#ifndef VELK_CLI_NOROUTEREASON_H
#define VELK_CLI_NOROUTEREASON_H

#include "cli/RouteEnd.h"
#include "cli/RouteFormats.h"

#include <velk/routing/Routing.h>

#include <atomic>

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
    QStringList switchableTypes;
    QStringList interfaceTypes;
};

/// Limits with which there is a route, the least of their kind, and how much the first such route has.
struct WiderLimits
{
    RouteLimits limits;
    qsizetype switches;
    qsizetype connections;
};

/// Whether any limits would let a route be found.
bool isConnected(const VainSearch &search);

/// For ends that are connected: more switches, if that alone is enough; more connections, if that alone is enough; else
/// both, with as few switches as a route can have. Each is proved by a search.
QList<WiderLimits> widerLimits(const VainSearch &search);

/// Prints on standard error why there is no route: an end that is connected to nothing, no connection at all, or the
/// limits that would do. What is not known after some seconds is left out, and the process ended with this exit status,
/// since the search cannot be called off. Switches the trace off.
void explainNoRoute(const VainSearch &search, const PinNames &pinNames, int exitStatus);
}

#endif
