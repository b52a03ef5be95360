#include "cli/NoRouteReason.h"

#include "cli/Message.h"
#include "cli/Progress.h"
#include "cli/RouteFormats.h"

#include <velk/facade/VelkRouting.h>

#include <algorithm>
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
    const auto paths = routing.findPaths(search.source.component, search.source.node->pin, search.destination.component,
                                         search.destination.node->pin);
    return paths.isEmpty() ? std::nullopt : std::optional(paths.first());
}

std::optional<RoutingPath> firstRoute(const VainSearch &search, RouteLimits limits)
{
    return firstRoute(search, limits, search.interfaceTypes);
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

/// "8 switches, 1 side connection"
QString amountText(const WiderLimits &found)
{
    QString text = switchCount(found.switches);
    if (found.connections > 0)
        text += found.connections == 1 ? u", 1 side connection"_s : u", %1 side connections"_s.arg(found.connections);
    return text;
}

QString optionText(const WiderLimits &found, RouteLimits before)
{
    QStringList options;
    if (found.limits.switches != before.switches)
        options.append(u"--max-switches %1"_s.arg(found.limits.switches));
    if (found.limits.connections != before.connections)
        options.append(u"--max-connections %1"_s.arg(found.limits.connections));
    return u"with %1 (%2)"_s.arg(options.join(u' '), amountText(found));
}

/// Empty if something else lies on the node's net, too.
QString looseEndText(const EDAProvider &netlist, const QSharedPointer<EDANetNode> &node, const PinNames &pinNames)
{
    const QString name = pinNames.text(node->ref, node->pin);
    bool isOnNet = false;
    const auto nets = netlist.getNets();
    for (const auto &net : nets) {
        if (!net->containsNode(node))
            continue;
        isOnNet = true;
        if (!net->otherNodes(node).isEmpty())
            return {};
    }
    return isOnNet ? u"nothing else lies on the net of "_s + name : name + u" lies on no net"_s;
}

QString limitsText(const VainSearch &search)
{
    QStringList ways;
    const auto found = widerLimits(search);
    for (const WiderLimits &limits : found)
        ways.append(optionText(limits, search.limits));
    return u"all routes are beyond the limits; there is one "_s + ways.join(u", or one "_s);
}

/// The way from one side of a relay to what lies behind the other is found in one direction only.
QString otherDirectionText(const VainSearch &search)
{
    VainSearch reversed = search;
    std::swap(reversed.source, reversed.destination);
    return shortestRoute(reversed) ? u"; in the other direction there is one"_s : QString();
}

/// Sets the number of switches in the shortest chain as soon as it is known.
QString reasonText(const VainSearch &search, const PinNames &pinNames, std::atomic<qsizetype> &shortest)
{
    const auto route = shortestRoute(search);
    if (route) {
        shortest = route->switchingComponents.size();
        return limitsText(search);
    }
    QStringList reasons{looseEndText(search.netlist, search.source.node, pinNames),
                        looseEndText(search.netlist, search.destination.node, pinNames)};
    reasons.removeAll(QString());
    if (reasons.isEmpty())
        reasons.append(u"no chain of components of CompType %1 connects them, however long"_s.arg(
            search.switchableTypes.join(u" or "_s)));
    return reasons.join(u", and "_s) + otherDirectionText(search);
}

void explainInTime(const VainSearch &search, const PinNames &pinNames, int exitStatus)
{
    VelkRouting::setTraceEnabled(false);
    const Progress progress;
    Progress::begin(u"finding out why there is no route"_s);
    std::atomic<qsizetype> shortest = -1;
    std::packaged_task<QString()> task([&] { return reasonText(search, pinNames, shortest); });
    auto reason = task.get_future();
    std::thread thread(std::move(task));
    const bool isKnown = reason.wait_for(timeToExplain) == std::future_status::ready;
    Progress::end();
    if (isKnown) {
        thread.join();
        printMessage(u"velk: "_s + reason.get());
        return;
    }
    if (shortest >= 0)
        printMessage(
            u"velk: all routes are beyond the limits; the shortest chain has %1, and it would take long to find out "
            "which limits would do"_s.arg(switchCount(shortest)));
    else
        printMessage(u"velk: it would take long to find out whether they are connected at all"_s);
    std::fflush(nullptr);
    std::_Exit(exitStatus);
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

// The answer itself has been given.
void explainNoRoute(const VainSearch &search, const PinNames &pinNames, int exitStatus)
{
    try {
        explainInTime(search, pinNames, exitStatus);
    } catch (const std::exception &exception) {
        printMessage(u"velk: why there is none could not be found out: "_s + QString::fromUtf8(exception.what()));
    }
}
}
