#ifndef VELK_SEARCH_PRUNEDPATHSEARCH_H
#define VELK_SEARCH_PRUNEDPATHSEARCH_H

#include <velk/search/FoundPaths.h>
#include <velk/search/SearchBounds.h>

#include <optional>
#include <vector>

namespace Velk {

/// The search of one query on an index. It finds what PathSearch finds, without entering branches from which the
/// destination cannot be reached within the limits.
class PrunedPathSearch
{
public:
    /// All but the last have to stay.
    PrunedPathSearch(const NetlistIndex &netlist, const SearchRules &searchRules, Interruption &searchInterruption,
                     bool keepsCrossings);

    /// All paths, or the first ones if their number is bounded: those with the fewest switching components first, among
    /// them those with the fewest additional nodes, among equals in depth-first order. Call it once. Throws
    /// EDASearchCalledOffException.
    FoundPaths run();

private:
    /// A net on the current branch and what is still to be crossed from it.
    struct Level
    {
        int net;
        int arrival; ///< terminal by which it was reached
        int nextNode;
        int endNode;
        int component; ///< the one being crossed
        int entry;     ///< the terminal by which that is entered
        int nextPin;   ///< of it
        int endPin;
        std::size_t additionalNodesBefore; ///< how many the branch had before this net

        /// The one that was begun last.
        Crossing crossing() const { return {net, nextNode - 1, nextPin - 1}; }
    };

    void searchOnce();
    void enterSourceNet();
    void crossToNextPin();
    void enterNextComponent();
    void enterNet(int net, int arrival, std::size_t additionalNodesBefore);
    void leaveNet();
    void collectAdditionalNodes(int net, int arrival);
    void dropAdditionalNodes(std::size_t countBefore);
    std::size_t keptNodesPlace();
    qsizetype additionalNodeCount() const { return static_cast<qsizetype>(additionalNodes.size()); }
    void keepPath(int lastNet);

    const NetlistIndex &index;
    const SearchRules &rules;
    Interruption &interruption;
    BorrowedMemory borrowed;
    SearchMemory &memory;
    IterativeDeepening deepening;
    SearchBounds bounds;
    std::vector<Level> branch;
    std::vector<NodeOnNet> additionalNodes; ///< of the branch
    /// Where the same are kept, if a path has needed them. Paths that have the same nodes share them.
    std::optional<std::size_t> keptNodes;
    FoundPaths paths;
};
}

#endif
