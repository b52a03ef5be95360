#ifndef VELK_SEARCH_SEARCHRULES_H
#define VELK_SEARCH_SEARCHRULES_H

#include <velk/index/NetlistIndex.h>
#include <velk/search/RoutingRules.h>

#include <algorithm>
#include <vector>

namespace Velk {

/// The limits, the ends and the exclusions of a query in the numbers of an index.
struct SearchRules
{
    SearchRules(const RoutingRules &rules, const NetlistIndex &index, const NumberedNode &source,
                const NumberedNode &destination)
        : ends{source.terminal, destination.terminal}
        , sourceComponent(source.component)
        , maxNetsSearched(rules.maxNetsSearched())
        , maxAdditionalNodes(rules.maxAdditionalNodes)
        , maxPaths(rules.maxPaths)
        , exclusions(rules.exclusions ? rules.exclusions->in(index) : nullptr)
    {
        for (const QString &ref : rules.requiredComponents)
            require(index.componentNumber(ref));
    }

    /// Has each path cross this component too.
    void require(int component)
    {
        const bool mayBeCrossed = component != NetlistIndex::none && !isExcludedComponent(component);
        const int needed = mayBeCrossed ? component : NetlistIndex::none;
        const auto place = std::lower_bound(required.begin(), required.end(), needed);
        if (place == required.end() || *place != needed)
            required.insert(place, needed);
    }

    PathEnds<int> ends; ///< terminals
    int sourceComponent;
    int maxNetsSearched;
    int maxAdditionalNodes;
    qsizetype maxPaths;
    std::shared_ptr<const Exclusions> exclusions; ///< null: nothing is excluded
    std::vector<int> required; ///< components that each path crosses, ascending; none: an unknown or excluded one

    /// False where an end is unknown, or its pin was added to a part after the index had been made.
    bool hasEnds() const { return ends.source != NetlistIndex::none && ends.destination != NetlistIndex::none; }
    /// Whether no path can cross what it has to.
    bool requiresImpossible() const { return !required.empty() && required.front() == NetlistIndex::none; }
    bool isExcludedComponent(int component) const { return exclusions && exclusions->hasComponent(component); }
    bool isExcludedNet(int net) const { return exclusions && exclusions->hasNet(net); }
};
}

#endif
