#include <velk/routing/NoPathSearch.h>

#include <velk/index/ProviderIndex.h>
#include <velk/model/EDAException.h>
#include <velk/routing/NetlistReach.h>
#include <velk/search/SearchRules.h>

#include <algorithm>
#include <limits>

namespace Velk {

namespace {

/// The largest limit of switches that allows any: its successor is a number still.
constexpr int anySwitches = std::numeric_limits<int>::max() - 1;
constexpr int anyNodes = std::numeric_limits<int>::max();

/// A path of so many switches is found with a limit of one less.
int limitFor(const RoutingPath &path)
{
    return static_cast<int>(path.switchingComponents.size()) - 1;
}

SufficientLimits sufficient(int switches, int nodes, const RoutingPath &path)
{
    return {switches, nodes, path.switchingComponents.size(), path.additionalNodes.size()};
}
}

NoPathSearch::NoPathSearch(const RoutingPrivate &configuredRouting, const NodeWithComponent &sourceNode,
                           const NodeWithComponent &destinationNode)
    : routing(configuredRouting)
    , ownIndex(routing.providerIndex() ? nullptr : indexOf(*routing.provider))
    , index(ownIndex && ownIndex->hasTerminals() ? ownIndex.get() : routing.providerIndex())
    , source(sourceNode)
    , destination(destinationNode)
{
}

NoPathReason NoPathSearch::reason() const
{
    NoPathReason reason;
    try {
        explain(reason);
        reason.isComplete = true;
    } catch (const EDASearchCalledOffException &) { // what is known by now is what was asked for
    }
    return reason;
}

void NoPathSearch::explain(NoPathReason &reason) const
{
    const auto shortest = shortestChain(source, destination);
    reason.isConnected = shortest.has_value();
    if (shortest) {
        reason.shortest = shortest->switchingComponents.size();
        reason.sufficientLimits = sufficientLimits(*shortest);
    } else {
        explainUnconnected(reason);
    }
}

void NoPathSearch::explainUnconnected(NoPathReason &reason) const
{
    const NetlistReach reach(routing, source.node, destination.node);
    reason.fromSource = reach.fromSource();
    reason.fromDestination = reach.fromDestination();
    reason.between = reach.componentsBetween();
    reason.isConnectedInOtherDirection = shortestChain(destination, source).has_value();
}

std::optional<RoutingPath> NoPathSearch::firstPath(Limits limits) const
{
    return firstPath(limits, routing.rules.roles.interfaceTypes, source, destination);
}

// Without interfaces nothing is collected, so that one measure suffices to find the way.
std::optional<RoutingPath> NoPathSearch::shortestChain(const NodeWithComponent &from, const NodeWithComponent &to) const
{
    return firstPath({anySwitches, 0}, {}, from, to);
}

std::optional<RoutingPath> NoPathSearch::firstPath(Limits limits, const QList<QString> &interfaceTypes,
                                                   const NodeWithComponent &from, const NodeWithComponent &to) const
{
    RoutingRules rules = routing.rules;
    rules.roles.interfaceTypes = interfaceTypes;
    rules.maxSwitchingComponents = limits.switches;
    rules.maxAdditionalNodes = limits.nodes;
    rules.maxPaths = 1;
    const auto paths = pathsBy(rules, from, to);
    return paths.isEmpty() ? std::nullopt : std::optional(paths.first());
}

QList<RoutingPath> NoPathSearch::pathsBy(const RoutingRules &rules, const NodeWithComponent &from,
                                         const NodeWithComponent &to) const
{
    if (index) {
        const SearchRules numbered(rules, index->numberedNode(from.node->ref, from.node->pin),
                                   index->numberedNode(to.node->ref, to.node->pin));
        if (numbered.hasEnds())
            return routing.search<RoutingPath>(*index, rules.roles, numbered);
    }
    return routing.searchExhaustively<RoutingPath>(rules, from, to);
}

QList<SufficientLimits> NoPathSearch::sufficientLimits(const RoutingPath &shortest) const
{
    QList<SufficientLimits> result;
    for (const auto &found : {moreSwitches(), moreNodes()}) {
        if (found)
            result.append(*found);
    }
    if (!result.isEmpty())
        return result;
    const int switches = limitFor(shortest);
    const auto path = firstPath({switches, anyNodes});
    if (!path) // a provider need not answer twice the same
        return {};
    return {sufficient(switches, static_cast<int>(path->additionalNodes.size()), *path)};
}

std::optional<SufficientLimits> NoPathSearch::moreSwitches() const
{
    const auto path = firstPath({anySwitches, limits().nodes});
    if (!path)
        return {};
    return sufficient(limitFor(*path), limits().nodes, *path);
}

/// The least limit of nodes with which there is a path of no more switches than their limit allows.
std::optional<SufficientLimits> NoPathSearch::moreNodes() const
{
    auto path = firstPath({limits().switches, anyNodes});
    if (!path)
        return {};
    int tooFew = std::max(limits().nodes, -1);
    while (tooFew < path->additionalNodes.size() - 1) { // there may be no number above it
        const int middle = tooFew + (static_cast<int>(path->additionalNodes.size()) - tooFew) / 2;
        const auto better = firstPath({limits().switches, middle});
        if (better)
            path = better;
        else
            tooFew = middle;
    }
    return sufficient(limits().switches, static_cast<int>(path->additionalNodes.size()), *path);
}
}
