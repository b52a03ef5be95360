#ifndef VELK_ROUTING_SEARCHBOUNDS_H
#define VELK_ROUTING_SEARCHBOUNDS_H

#include <velk/routing/SearchMemory.h>
#include <velk/routing/SearchRules.h>

namespace Velk {

/// What it takes at least to get from a net to the destination: so many switches, and so many additional nodes
/// collected on the way. A branch that has too little left of either is not entered.
class SearchBounds
{
public:
    /// All three must stay.
    SearchBounds(const NetlistIndex &netlist, const SearchRules &searchRules, SearchMemory &memory);

    /// Looks at the surroundings of the destination, as far as a path can be long. Call it first.
    void measure();
    /// Tells that a branch which was allowed had to collect too much. Where that happens often, it is worth measuring
    /// what has to be collected, which is not known before.
    void noteUselessBranch();

    /// Whether the net holds the destination.
    bool isLast(int net) const { return switches.has(net) && switches.value(net) == 0; }
    /// Whether a branch may enter this net, having switched so many components and collected so many additional nodes
    /// before it.
    bool allow(int net, qsizetype switched, qsizetype collected) const
    {
        return switches.has(net) && switched + switches.value(net) <= rules.maxNetsSearched &&
               (!areNodesMeasured ||
                (additionalNodes.has(net) && collected + additionalNodes.value(net) <= rules.maxAdditionalNodes));
    }

private:
    void measureAdditionalNodes();
    int additionalNodesOn(int net);
    int countAdditionalNodesOn(int net) const;
    template <typename Visit>
    void crossFrom(int net, Visit visit);

    const NetlistIndex &index;
    const SearchRules &rules;
    const int sourceNet;
    Marks &switches;
    Marks &additionalNodes;
    Marks &ownAdditionalNodes;
    Marks &crossed;
    std::vector<int> &nets;
    std::size_t uselessBranches = 0;
    bool areNodesMeasured = false;
};
}

#endif
