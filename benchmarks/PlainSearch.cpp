#include "benchmarks/PlainSearch.h"

#include "benchmarks/Roles.h"

#include <algorithm>
#include <tuple>

namespace VelkBenchmarks {

using namespace Velk;

PlainSearch::PlainSearch(const EDAProvider &searchedProvider, int limitOfSwitches, int limitOfAdditionalNodes)
    : provider(searchedProvider)
    , maxSwitches(limitOfSwitches)
    , maxAdditionalNodes(limitOfAdditionalNodes)
{
}

QList<RoutingPath> PlainSearch::findPaths(const QMap<QString, QString> &sourceProperties, const QString &sourcePin,
                                          const QMap<QString, QString> &destinationProperties,
                                          const QString &destinationPin)
{
    source = findNode(sourceProperties, sourcePin);
    destination = findNode(destinationProperties, destinationPin);
    auto paths = searchNode(source, {}, {});
    std::sort(paths.begin(), paths.end(), [](const auto &a, const auto &b) {
        return std::tuple(a.switchingComponents.size(), a.additionalNodes.size()) <
               std::tuple(b.switchingComponents.size(), b.additionalNodes.size());
    });
    return paths;
}

PlainSearch::Node PlainSearch::findNode(const QMap<QString, QString> &properties, const QString &pin) const
{
    const auto component = provider.getComponentByProperties(properties);
    return EDANetNode::create(component->ref,
                              provider.getPartByName(component->part)->getPinByNumberOrName(pin)->number);
}

// The visited nets and the additional nodes are copies: each branch has its own.
QList<RoutingPath> PlainSearch::searchNode(const Node &node, QSet<const EDANet *> visited,
                                           QList<Node> additionalNodes) const
{
    const auto net = netContaining(node);
    if (net.isNull() || visited.contains(net.data()))
        return {};
    visited.insert(net.data());
    if (net->containsNode(destination))
        return {RoutingPath{{}, additionalNodes}};
    if (node != source) {
        const auto others = otherNodes(net, node);
        for (const auto &other : others) {
            if (other.node != source && other.node != destination && isInterface(*other.component))
                additionalNodes.append(other.node);
        }
    }
    if (visited.size() > maxSwitches + 1 || additionalNodes.size() > maxAdditionalNodes)
        return {};
    return searchPaths(net, node, visited, additionalNodes);
}

QList<RoutingPath> PlainSearch::searchPaths(const Net &net, const Node &node, const QSet<const EDANet *> &visited,
                                            const QList<Node> &additionalNodes) const
{
    QList<RoutingPath> result;
    const auto others = otherNodes(net, node);
    for (const auto &other : others) {
        if (!isSwitchable(*other.component))
            continue;
        const auto exits = otherPins(other.component, other.node->pin);
        for (const auto &exit : exits) {
            auto paths = searchNode(exit, visited, additionalNodes);
            for (auto &path : paths)
                path.switchingComponents.prepend(other.component);
            result += paths;
        }
    }
    return result;
}

PlainSearch::Net PlainSearch::netContaining(const Node &node) const
{
    const auto nets = provider.getNets();
    for (const auto &net : nets) {
        if (net->containsNode(node))
            return net;
    }
    return {};
}

QList<NodeWithComponent> PlainSearch::otherNodes(const Net &net, const Node &node) const
{
    QList<NodeWithComponent> result;
    const auto others = net->otherNodes(node);
    for (const auto &other : others) {
        if (const auto component = provider.getComponentByRef(other->ref))
            result.append({other, component});
    }
    return result;
}

QList<PlainSearch::Node> PlainSearch::otherPins(const QSharedPointer<EDAComponent> &component, const QString &pin) const
{
    QList<Node> result;
    const auto part = provider.getPartByName(component->part);
    for (const auto &other : std::as_const(part->pins)) {
        if (other->number != pin)
            result.append(EDANetNode::create(component->ref, other->number));
    }
    return result;
}
}
