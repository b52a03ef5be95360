#ifndef VELK_ROUTING_NOPATHSEARCH_H
#define VELK_ROUTING_NOPATHSEARCH_H

#include <velk/index/NetlistIndex.h>
#include <velk/routing/NoPathReason.h>
#include <velk/routing/RoutingPath.h>
#include <velk/routing/RoutingPrivate.h>

#include <memory>

namespace Velk {

/// Finds out why there is no path between two pins, by searches with other limits.
class NoPathSearch
{
public:
    /// All have to stay.
    NoPathSearch(const RoutingPrivate &configuredRouting, const NodeWithComponent &sourceNode,
                 const NodeWithComponent &destinationNode);

    /// What is known when the search is called off is incomplete.
    NoPathReason reason() const;

private:
    struct Limits
    {
        int switches;
        int nodes;
    };

    void explain(NoPathReason &reason) const;
    void explainUnconnected(NoPathReason &reason) const;
    Limits limits() const { return {routing.rules.maxSwitchingComponents, routing.rules.maxAdditionalNodes}; }
    std::optional<RoutingPath> firstPath(Limits limits) const;
    std::optional<RoutingPath> firstPath(Limits limits, const QList<QString> &interfaceTypes,
                                         const NodeWithComponent &from, const NodeWithComponent &to) const;
    QList<RoutingPath> pathsBy(const RoutingRules &rules, const NodeWithComponent &from,
                               const NodeWithComponent &to) const;
    std::optional<RoutingPath> shortestChain(const NodeWithComponent &from, const NodeWithComponent &to) const;
    QList<SufficientLimits> sufficientLimits(const RoutingPath &shortest) const;
    std::optional<SufficientLimits> moreSwitches() const;
    std::optional<SufficientLimits> moreNodes() const;

    const RoutingPrivate &routing;
    // Without an index and with any limit, a search may take longer than anybody waits.
    const std::unique_ptr<const NetlistIndex> ownIndex; ///< where the provider has none
    const NetlistIndex *const index;                    ///< null where there are too many pins for one
    const NodeWithComponent &source;
    const NodeWithComponent &destination;
};
}

#endif
