#ifndef VELK_SEARCH_SEARCHRULES_H
#define VELK_SEARCH_SEARCHRULES_H

#include <velk/index/NetlistIndex.h>
#include <velk/model/EDANetNode.h>
#include <velk/search/RoutingRules.h>

namespace Velk {

/// The limits and the ends of a query in the numbers of an index.
struct SearchRules
{
    SearchRules(const RoutingRules &rules, const NetlistIndex &index, const EDANetNode &source,
                const EDANetNode &destination)
        : SearchRules(rules, index.numberedNode(source.ref, source.pin),
                      index.numberedNode(destination.ref, destination.pin))
    {
    }

    PathEnds<int> ends; ///< terminals
    int sourceComponent;
    int maxNetsSearched;
    int maxAdditionalNodes;
    qsizetype maxPaths;

    /// False where a pin was added to a part after the index had been made.
    bool hasEnds() const { return ends.source != NetlistIndex::none && ends.destination != NetlistIndex::none; }

private:
    SearchRules(const RoutingRules &rules, const NumberedNode &source, const NumberedNode &destination)
        : ends{source.terminal, destination.terminal}
        , sourceComponent(source.component)
        , maxNetsSearched(rules.maxNetsSearched())
        , maxAdditionalNodes(rules.maxAdditionalNodes)
        , maxPaths(rules.maxPaths)
    {
    }
};
}

#endif
