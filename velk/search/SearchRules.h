#ifndef VELK_SEARCH_SEARCHRULES_H
#define VELK_SEARCH_SEARCHRULES_H

#include <velk/index/NetlistIndex.h>
#include <velk/search/RoutingRules.h>

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
    }

    PathEnds<int> ends; ///< terminals
    int sourceComponent;
    int maxNetsSearched;
    int maxAdditionalNodes;
    qsizetype maxPaths;
    std::shared_ptr<const Exclusions> exclusions; ///< null: nothing is excluded

    /// False where an end is unknown, or its pin was added to a part after the index had been made.
    bool hasEnds() const { return ends.source != NetlistIndex::none && ends.destination != NetlistIndex::none; }
    bool isExcludedComponent(int component) const { return exclusions && exclusions->hasComponent(component); }
    bool isExcludedNet(int net) const { return exclusions && exclusions->hasNet(net); }
};
}

#endif
