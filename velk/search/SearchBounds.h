#ifndef VELK_SEARCH_SEARCHBOUNDS_H
#define VELK_SEARCH_SEARCHBOUNDS_H

#include <velk/search/Interruption.h>
#include <velk/search/IterativeDeepening.h>
#include <velk/search/SearchMemory.h>
#include <velk/search/SearchRules.h>

namespace Velk {

/// What it takes at least to get from a net to the destination: so many switches, and so many additional nodes
/// collected on the way. A branch that has too little left of either is not entered.
class SearchBounds
{
public:
    /// All of them must stay.
    SearchBounds(const NetlistIndex &netlist, const SearchRules &searchRules, IterativeDeepening &searchDeepening,
                 Interruption &searchInterruption, SearchMemory &memory);

    /// Looks at the surroundings of the destination, as far as a path can be long. Call it first.
    void measure();
    /// Tells that a branch which was allowed had to collect too much. Where that happens often, it is worth measuring
    /// what has to be collected, which is not known before unless the number of paths is bounded.
    void noteUselessBranch();

    /// Whether the net holds the destination.
    bool isLast(int net) const { return switches.has(net) && switches.value(net) == 0; }
    /// Whether a branch may enter this net in this pass, having switched so many components and collected so many
    /// additional nodes before it. Where it may not, that is noted for later passes.
    bool allow(int net, qsizetype switched, qsizetype collected)
    {
        if (!isLabelled)
            return switches.has(net) && deepening.reaches(switched + switches.value(net), collected);
        for (int i = latestLabelOf(net); i != NetlistIndex::none; i = labelAt(i).earlier) {
            if (deepening.reaches(switched + labelAt(i).switches, collected + labelAt(i).additionalNodes))
                return true;
        }
        if (deepening.isBounded())
            noteCut(net, switched, collected);
        return false;
    }

private:
    void measureSwitches();
    void measureBoth();
    void label(int net, int switchCount, int nodeCount);
    const Label &labelAt(int number) const { return labels[static_cast<std::size_t>(number)]; }
    int latestLabelOf(int net) const { return latestLabels.has(net) ? latestLabels.value(net) : NetlistIndex::none; }
    void noteCut(int net, qsizetype switched, qsizetype collected);
    int additionalNodesOn(int net);
    int countAdditionalNodesOn(int net) const;
    template <typename Visit>
    void crossFrom(int net, int collected, Visit visit);

    const NetlistIndex &index;
    const SearchRules &rules;
    IterativeDeepening &deepening;
    Interruption &interruption;
    const int sourceNet;
    Marks &switches;
    Marks &latestLabels;
    Marks &ownAdditionalNodes;
    Marks &crossed;
    std::vector<int> &nets;
    std::vector<Label> &labels;
    std::size_t uselessBranches = 0;
    bool isLabelled = false;
};
}

#endif
