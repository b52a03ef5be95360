#ifndef VELK_SEARCH_SEARCHBOUNDS_H
#define VELK_SEARCH_SEARCHBOUNDS_H

#include <velk/search/Interruption.h>
#include <velk/search/IterativeDeepening.h>
#include <velk/search/SearchMemory.h>
#include <velk/search/SearchRules.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace Velk {

/// What it takes at least to get from a net to the destination: so many switches, and so many additional nodes
/// collected on the way. A branch that has too little left of either is not entered.
class SearchBounds
{
public:
    /// All of them must stay.
    SearchBounds(const NetlistIndex &netlist, const CrossingGraph &crossingGraph, const SearchRules &searchRules,
                 IterativeDeepening &searchDeepening, Interruption &searchInterruption, SearchMemory &memory);

    /// Looks at the surroundings of the destination, as far as a path can be long. Call it first.
    void measure();
    /// Instead, for rules that exclude this component: notes how many switches lead from each net within reach to the
    /// destination over one crossing of it. A path that crosses it more often takes no fewer, since from the first net
    /// where it does one crossing would lead to the last.
    void measureOver(int component, Marks &switchesOver);
    /// Tells that a branch which was allowed had to collect too much. Where that happens often, it is worth measuring
    /// what has to be collected, which is not known before unless the number of paths is bounded.
    void noteUselessBranch();

    /// Whether the net holds the destination.
    bool isLast(int net) const { return switches.value(net) == 0; }
    /// Whether one switch leads from the net to the destination.
    bool isNextToLast(int net) const { return switches.value(net) == 1; }
    /// How many switches a net may need that a branch reaches by so many, beginning with \a switched. All within reach
    /// where it has to be noted which branches are cut off.
    int switchesLeft(qsizetype switched) const
    {
        return static_cast<int>(std::min<qsizetype>(deepening.switchesLeft(switched), neverEnough - 1));
    }
    /// Whether a row to this net, or to a junction, may lead on to others than the last one with so many switches left.
    /// One look tells it for nets too far off and on the branch too: it is what searches do most.
    bool mayLeadOn(int net, int switchesLeft) const
    {
        return static_cast<unsigned int>(switches.value(net)) - 1U < static_cast<unsigned int>(switchesLeft);
    }
    /// Whether a branch may enter this net in this pass, having switched so many components and collected so many
    /// additional nodes before it. Where it may not, that is noted for later passes.
    bool allow(int net, qsizetype switched, qsizetype collected)
    {
        if (!isLabelled)
            return deepening.reaches(switched + switches.value(net), collected);
        for (int i = latestLabelOf(net); i != NetlistIndex::none; i = labelAt(i).earlier) {
            if (deepening.reaches(switched + labelAt(i).switches, collected + labelAt(i).additionalNodes))
                return true;
        }
        if (deepening.isBounded())
            noteCut(net, switched, collected);
        return false;
    }

    /// Puts a net on the branch, so that no row leads to it, or takes it off.
    void toggleOnBranch(int net) { switches.set(net, -switches.value(net)); }

private:
    /// For a net within reach that no branch may enter, whatever is left to it.
    static constexpr int neverEnough = Marks::unmarked - 1;

    template <bool hasExclusions>
    void measureSwitches();
    void measureBoth();
    template <bool hasExclusions>
    void measureLabels();
    std::vector<std::pair<int, int>> entriesOf(int component);
    bool leadsOver(int component, int net);
    void label(int net, int switchCount, int nodeCount);
    const Label &labelAt(int number) const { return labels[static_cast<std::size_t>(number)]; }
    int latestLabelOf(int net) const { return latestLabels.has(net) ? latestLabels.value(net) : NetlistIndex::none; }
    void noteCut(int net, qsizetype switched, qsizetype collected);
    /// A node by which the net may be entered is not collected. It belongs to a switchable component, so these are left
    /// out, even where they are interfaces too. How often the source lies on one more net is not worth counting.
    int additionalNodesOn(int net) const { return holdsSource(net) ? 0 : graph.pureInterfaceNodeCount(net); }
    bool holdsSource(int net) const
    {
        return net == sourceNet ||
               std::find(furtherSourceNets.begin(), furtherSourceNets.end(), net) != furtherSourceNets.end();
    }
    template <bool hasExclusions, typename Visit>
    Q_ALWAYS_INLINE void crossFrom(int net, int collected, Visit visit);
    template <typename Visit>
    void crossJunction(const CrossingRow &entry, int collected, Visit visit);

    const NetlistIndex &index;
    const CrossingGraph &graph;
    const SearchRules &rules;
    IterativeDeepening &deepening;
    Interruption &interruption;
    const int sourceNet;
    const std::vector<int> furtherSourceNets;
    Marks &switches;
    Marks &latestLabels;
    Marks &crossed;
    std::vector<Label> &labels;
    std::size_t uselessBranches = 0;
    bool isLabelled = false;
};
}

#endif
