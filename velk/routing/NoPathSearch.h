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
    NoPathReason reason();

private:
    struct Limits
    {
        int switches;
        int nodes;
    };

    void explain(NoPathReason &reason);
    void explainExclusions(NoPathReason &reason);
    bool isConnectedOverOthers();
    void explainUnconnected(NoPathReason &reason);
    void explainUnrealizable(NoPathReason &reason, const RoutingPath &shortestAsDrawn);
    std::optional<PositionConflict> conflict(const RoutingPath &shortestAsDrawn);
    Limits limits() const { return {routing.rules.maxSwitchingComponents, routing.rules.maxAdditionalNodes}; }
    QList<SufficientLimits> sufficientLimits(const RoutingRules &rules, const RoutingPath &shortest);
    std::optional<SufficientLimits> moreSwitches(const RoutingRules &rules);
    std::optional<SufficientLimits> moreNodes(const RoutingRules &rules);
    std::optional<RoutingPath> shortestChain(RoutingRules rules, const NodeWithComponent &from,
                                             const NodeWithComponent &to);
    template <typename Path>
    std::optional<Path> firstPath(RoutingRules rules, Limits limits);
    template <typename Path>
    std::optional<Path> firstPath(RoutingRules rules, Limits limits, const NodeWithComponent &from,
                                  const NodeWithComponent &to);
    template <typename Path>
    QList<Path> pathsBy(const RoutingPrivate &searching, const RoutingRules &rules, const NodeWithComponent &from,
                        const NodeWithComponent &to) const;
    template <typename Path>
    QList<Path> pathsWithinEffort(const RoutingRules &rules, const NodeWithComponent &from,
                                  const NodeWithComponent &to);

    const RoutingPrivate &routing;
    // Without an index and with any limit, a search may take longer than anybody waits.
    const std::unique_ptr<const NetlistIndex> ownIndex; ///< where the provider has none
    const NetlistIndex *const index;                    ///< null where there are too many pins for one
    const NodeWithComponent &source;
    const NodeWithComponent &destination;
    bool hasGivenUp = false; ///< some search for a path that a state of the relays makes
};
}

#endif
