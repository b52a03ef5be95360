#include "cli/NoRouteReason.h"

#include "cli/terminal/CommandError.h"
#include "cli/terminal/Progress.h"

#include <velk/facade/VelkRouting.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <future>
#include <limits>
#include <optional>
#include <thread>
#include <utility>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

constexpr auto timeToExplain = std::chrono::seconds(5);

/// The largest limit of switches that allows any: its successor is a number still.
constexpr int anySwitches = std::numeric_limits<int>::max() - 1;
constexpr int anyConnections = std::numeric_limits<int>::max();

/// The first route within these limits.
std::optional<RoutingPath> firstRoute(const VainSearch &search, RouteLimits limits, const QStringList &interfaceTypes)
{
    Routing routing = search.routing;
    routing.setComponentTypesThatAreInterfaces(interfaceTypes);
    routing.setMaxSwitchingComponentsPerPath(limits.switches);
    routing.setMaxAdditionalNodesPerPath(limits.connections);
    routing.setMaxPaths(1);
    const auto paths = routing.findPathsBetween(search.source.component, search.source.node->pin,
                                                search.destination.component, search.destination.node->pin);
    return paths.isEmpty() ? std::nullopt : std::optional(paths.first());
}

std::optional<RoutingPath> firstRoute(const VainSearch &search, RouteLimits limits)
{
    return firstRoute(search, limits, search.types.interfaces);
}

// Without interfaces nothing is collected, so that one measure suffices to find the way.
std::optional<RoutingPath> shortestRoute(const VainSearch &search)
{
    return firstRoute(search, {anySwitches, 0}, {});
}

/// A route of so many switches is found with a limit of one less.
int limitFor(const RoutingPath &route)
{
    return static_cast<int>(route.switchingComponents.size()) - 1;
}

WiderLimits wider(RouteLimits limits, const RoutingPath &route)
{
    return {limits, route.switchingComponents.size(), route.additionalNodes.size()};
}

std::optional<WiderLimits> moreSwitches(const VainSearch &search)
{
    const auto route = firstRoute(search, {anySwitches, search.limits.connections});
    if (!route)
        return {};
    return wider({limitFor(*route), search.limits.connections}, *route);
}

/// The least limit of connections with which there is a route of no more switches than this limit allows.
std::optional<WiderLimits> moreConnections(const VainSearch &search)
{
    auto route = firstRoute(search, {search.limits.switches, anyConnections});
    if (!route)
        return {};
    int tooFew = std::max(search.limits.connections, -1);
    while (tooFew + 1 < route->additionalNodes.size()) {
        const int middle = tooFew + (static_cast<int>(route->additionalNodes.size()) - tooFew) / 2;
        const auto better = firstRoute(search, {search.limits.switches, middle});
        if (better)
            route = better;
        else
            tooFew = middle;
    }
    return wider({search.limits.switches, static_cast<int>(route->additionalNodes.size())}, *route);
}

/// The way from one side of a relay to what lies behind the other is found in one direction only.
bool isConnectedInOtherDirection(const VainSearch &search)
{
    VainSearch reversed = search;
    std::swap(reversed.source, reversed.destination);
    return isConnected(reversed);
}

/// Sets the number of switches in the shortest chain as soon as it is known.
NoRouteReason findReason(const VainSearch &search, std::atomic<qsizetype> &shortest)
{
    NoRouteReason reason;
    const auto route = shortestRoute(search);
    if (route) {
        shortest = reason.shortest = route->switchingComponents.size();
        reason.widerLimits = widerLimits(search);
    } else {
        const NetlistReach reach(search.netlist, search.types, search.source.node, search.destination.node);
        reason.fromSource = reach.fromSource();
        reason.fromDestination = reach.fromDestination();
        reason.between = reach.componentsBetween();
        reason.isInOtherDirection = isConnectedInOtherDirection(search);
    }
    reason.isComplete = true;
    return reason;
}

/// Nothing where it takes longer; the search then goes on.
std::optional<NoRouteReason> reasonInTime(const VainSearch &search, std::atomic<qsizetype> &shortest)
{
    try {
        std::packaged_task<NoRouteReason()> task([&] { return findReason(search, shortest); });
        auto reason = task.get_future();
        std::thread thread(std::move(task));
        if (reason.wait_for(timeToExplain) != std::future_status::ready) {
            thread.detach();
            return {};
        }
        thread.join();
        return reason.get();
    } catch (const std::exception &exception) {
        NoRouteReason reason;
        reason.failure = QString::fromUtf8(exception.what());
        return reason;
    }
}
}

bool isConnected(const VainSearch &search)
{
    return shortestRoute(search).has_value();
}

QList<WiderLimits> widerLimits(const VainSearch &search)
{
    QList<WiderLimits> result;
    for (const auto &found : {moreSwitches(search), moreConnections(search)}) {
        if (found)
            result.append(*found);
    }
    if (!result.isEmpty())
        return result;
    const int switches = limitFor(*shortestRoute(search));
    const auto route = firstRoute(search, {switches, anyConnections});
    return {wider({switches, static_cast<int>(route->additionalNodes.size())}, *route)};
}

void explainNoRoute(const VainSearch &search, int exitStatus, const std::function<void(const NoRouteReason &)> &tell)
{
    VelkRouting::setTraceEnabled(false);
    Progress::begin(u"finding out why there is no route"_s);
    std::atomic<qsizetype> shortest = -1;
    const auto reason = reasonInTime(search, shortest);
    if (reason) {
        tell(*reason);
        return;
    }
    const int status = exitStatusOf([&] {
        NoRouteReason known;
        known.shortest = shortest;
        tell(known);
        return exitStatus;
    });
    std::fflush(nullptr);
    std::_Exit(status);
}
}
