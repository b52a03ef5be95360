#ifndef VELK_SEARCH_SEARCHRULES_H
#define VELK_SEARCH_SEARCHRULES_H

#include <velk/index/NetlistIndex.h>
#include <velk/model/EDANetNode.h>
#include <velk/search/RoutingRules.h>

#include <vector>

namespace Velk {

/// The rules and the ends of a query in the numbers of an index.
struct SearchRules
{
    /// No pin of a net, not even one that has no terminal: for arrivals that are not known.
    static constexpr int nowhere = NetlistIndex::none - 1;

    SearchRules(const RoutingRules &rules, const NetlistIndex &index, const EDANetNode &source,
                const EDANetNode &destination);

    PathEnds<int> ends; ///< terminals
    int maxNetsSearched;
    int maxAdditionalNodes;
    qsizetype maxPaths;
    std::vector<ComponentRole> roles; ///< by type

    /// False where a pin was added to a part after the index had been made.
    bool hasEnds() const { return ends.source != NetlistIndex::none && ends.destination != NetlistIndex::none; }
    /// Whether a branch that has arrived by this terminal may cross the component of the node.
    bool canCross(const NumberedNode &node, int arrival) const
    {
        return ends.canCross(roleOf(node), node.terminal, arrival); // equal nodes are one terminal
    }
    /// Whether it collects the node.
    bool isAdditional(const NumberedNode &node, int arrival) const
    {
        return ends.isAdditional(roleOf(node), node.terminal, arrival);
    }

private:
    const ComponentRole &roleOf(const NumberedNode &node) const { return roles[static_cast<std::size_t>(node.type)]; }
};
}

#endif
