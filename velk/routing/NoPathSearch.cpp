#include <velk/routing/NoPathSearch.h>

#include <velk/index/ProviderIndex.h>
#include <velk/model/EDAException.h>
#include <velk/routing/ElementExclusions.h>
#include <velk/routing/NetlistReach.h>
#include <velk/routing/StepPositions.h>
#include <velk/search/SearchRules.h>

#include <algorithm>
#include <limits>

namespace Velk {

namespace {

/// The largest limit of switches that allows any: its successor is a number still.
constexpr int anySwitches = std::numeric_limits<int>::max() - 1;
constexpr int anyNodes = std::numeric_limits<int>::max();
/// How often a search asks whether to end before it is given up, which is some tenths of a second.
constexpr int mostQuestions = 500;

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

NoPathReason NoPathSearch::reason()
{
    NoPathReason reason;
    try {
        explain(reason);
        reason.isComplete = true;
    } catch (const EDASearchCalledOffException &) { // what is known by now is what was asked for
    }
    return reason;
}

void NoPathSearch::explain(NoPathReason &reason)
{
    if (routing.rules.exclusions)
        explainExclusions(reason);
    const auto shortest = shortestChain(routing.rules, source, destination);
    reason.isConnected = shortest.has_value();
    if (!shortest) {
        reason.isConnectedOverOthers = isConnectedOverOthers();
        if (!reason.isConnectedOverOthers)
            explainUnconnected(reason);
        return;
    }
    reason.shortest = shortest->switchingComponents.size();
    if (routing.relayContacts)
        explainUnrealizable(reason, *shortest);
    else
        reason.sufficientLimits = sufficientLimits(routing.rules, *shortest);
}

void NoPathSearch::explainExclusions(NoPathReason &reason)
{
    RoutingRules rules = routing.tracedRules();
    rules.exclusions.reset();
    reason.pathWithoutExclusions = firstPath<TracedPath>(rules, limits());
    if (!reason.pathWithoutExclusions)
        return;
    const ElementExclusions exclusions(*routing.provider, routing.rules.exclusions);
    const auto add = [](const auto &element, auto &list, bool isExcluded) {
        const auto isSame = [&element](const auto &listed) { return listed.data() == element.data(); };
        if (isExcluded && std::none_of(list.cbegin(), list.cend(), isSame))
            list.append(element);
    };
    const auto addNet = [&](const QSharedPointer<EDANet> &net) {
        add(net, reason.excludedNets, exclusions.hasNet(*net));
    };
    for (const TracedStep &step : std::as_const(reason.pathWithoutExclusions->steps)) {
        addNet(step.net);
        add(step.component, reason.excludedComponents, exclusions.hasComponent(*step.component));
    }
    addNet(reason.pathWithoutExclusions->lastNet);
}

bool NoPathSearch::isConnectedOverOthers()
{
    if (routing.rules.requiredComponents.isEmpty())
        return false;
    RoutingRules rules = routing.rules;
    rules.requiredComponents.clear();
    return shortestChain(rules, source, destination).has_value();
}

void NoPathSearch::explainUnconnected(NoPathReason &reason)
{
    const NetlistReach reach(routing, source.node, destination.node);
    reason.fromSource = reach.fromSource();
    reason.fromDestination = reach.fromDestination();
    reason.between = reach.componentsBetween();
    reason.isConnectedInOtherDirection = shortestChain(routing.rules, destination, source).has_value();
}

void NoPathSearch::explainUnrealizable(NoPathReason &reason, const RoutingPath &shortestAsDrawn)
{
    reason.conflict = conflict(shortestAsDrawn);
    const RoutingRules rules = routing.tracedRules();
    const auto shortest = shortestChain(rules, source, destination);
    if (shortest) {
        reason.isRealizable = true;
        reason.sufficientLimits = sufficientLimits(rules, *shortest);
    } else if (!hasGivenUp) {
        reason.isRealizable = false;
    }
}

std::optional<PositionConflict> NoPathSearch::conflict(const RoutingPath &shortestAsDrawn)
{
    auto path = firstPath<TracedPath>(routing.rules, limits());
    if (!path) {
        const auto sufficient = sufficientLimits(routing.rules, shortestAsDrawn);
        if (sufficient.isEmpty()) // a provider need not answer twice the same
            return {};
        path = firstPath<TracedPath>(
            routing.rules, {sufficient.first().maxSwitchingComponents, sufficient.first().maxAdditionalNodes});
    }
    return path ? StepPositions(*routing.provider, routing.relayContacts).conflictOn(*path) : std::nullopt;
}

QList<SufficientLimits> NoPathSearch::sufficientLimits(const RoutingRules &rules, const RoutingPath &shortest)
{
    QList<SufficientLimits> result;
    for (const auto &found : {moreSwitches(rules), moreNodes(rules)}) {
        if (found)
            result.append(*found);
    }
    if (!result.isEmpty())
        return result;
    const int switches = limitFor(shortest);
    const auto path = firstPath<RoutingPath>(rules, {switches, anyNodes});
    if (!path) // a provider need not answer twice the same
        return {};
    return {sufficient(switches, static_cast<int>(path->additionalNodes.size()), *path)};
}

std::optional<SufficientLimits> NoPathSearch::moreSwitches(const RoutingRules &rules)
{
    const auto path = firstPath<RoutingPath>(rules, {anySwitches, limits().nodes});
    if (!path)
        return {};
    return sufficient(limitFor(*path), limits().nodes, *path);
}

/// The least limit of nodes with which there is a path of no more switches than their limit allows.
std::optional<SufficientLimits> NoPathSearch::moreNodes(const RoutingRules &rules)
{
    auto path = firstPath<RoutingPath>(rules, {limits().switches, anyNodes});
    if (!path)
        return {};
    int tooFew = std::max(limits().nodes, -1);
    while (tooFew < path->additionalNodes.size() - 1) { // there may be no number above it
        const int middle = tooFew + (static_cast<int>(path->additionalNodes.size()) - tooFew) / 2;
        const auto better = firstPath<RoutingPath>(rules, {limits().switches, middle});
        if (better)
            path = better;
        else
            tooFew = middle;
    }
    return sufficient(limits().switches, static_cast<int>(path->additionalNodes.size()), *path);
}

// Without interfaces nothing is collected, so that one measure suffices to find the way.
std::optional<RoutingPath> NoPathSearch::shortestChain(RoutingRules rules, const NodeWithComponent &from,
                                                       const NodeWithComponent &to)
{
    rules.roles.interfaceTypes.clear();
    return firstPath<RoutingPath>(rules, {anySwitches, 0}, from, to);
}

template <typename Path>
std::optional<Path> NoPathSearch::firstPath(RoutingRules rules, Limits limits)
{
    return firstPath<Path>(rules, limits, source, destination);
}

template <typename Path>
std::optional<Path> NoPathSearch::firstPath(RoutingRules rules, Limits limits, const NodeWithComponent &from,
                                            const NodeWithComponent &to)
{
    rules.maxSwitchingComponents = limits.switches;
    rules.maxAdditionalNodes = limits.nodes;
    rules.maxPaths = 1;
    const auto paths =
        rules.relayContacts ? pathsWithinEffort<Path>(rules, from, to) : pathsBy<Path>(routing, rules, from, to);
    return paths.isEmpty() ? std::nullopt : std::optional(paths.first());
}

// A gang in two positions shows on the whole way only. To tell that no way is without may mean to try all of them.
template <typename Path>
QList<Path> NoPathSearch::pathsWithinEffort(const RoutingRules &rules, const NodeWithComponent &from,
                                            const NodeWithComponent &to)
{
    RoutingPrivate searching(routing);
    int questionsLeft = mostQuestions;
    searching.isCalledOff = [&] { return questionsLeft-- == 0 || (routing.isCalledOff && routing.isCalledOff()); };
    try {
        return pathsBy<Path>(searching, rules, from, to);
    } catch (const EDASearchCalledOffException &) {
        if (questionsLeft >= 0)
            throw;
        hasGivenUp = true;
        return {};
    }
}

template <typename Path>
QList<Path> NoPathSearch::pathsBy(const RoutingPrivate &searching, const RoutingRules &rules,
                                  const NodeWithComponent &from, const NodeWithComponent &to) const
{
    if (index) {
        const SearchRules numbered(rules, *index, index->numberedNode(from.node->ref, from.node->pin),
                                   index->numberedNode(to.node->ref, to.node->pin));
        if (numbered.hasEnds())
            return searching.search<Path>(*index, rules, numbered);
    }
    return searching.searchExhaustively<Path>(rules, from, to);
}
}
