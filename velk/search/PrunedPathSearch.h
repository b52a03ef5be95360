#ifndef VELK_SEARCH_PRUNEDPATHSEARCH_H
#define VELK_SEARCH_PRUNEDPATHSEARCH_H

#include <velk/search/FoundPaths.h>
#include <velk/search/SearchBounds.h>

#include <vector>

namespace Velk {

/// The search of one query on an index. It finds what PathSearch finds, without entering branches from which the
/// destination cannot be reached within the limits.
class PrunedPathSearch
{
public:
    /// \a maxPaths of 0 or less is no bound.
    PrunedPathSearch(const NetlistIndex &netlist, const SearchRules &searchRules, qsizetype maxPaths);

    /// All paths, or the first ones if their number is bounded: those with the fewest switching components first, among
    /// them those with the fewest additional nodes, among equals in depth-first order. Call it once.
    QList<RoutingPath> run();

private:
    using NodeList = QList<QSharedPointer<EDANetNode>>;

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
    };

    void searchOnce();
    void enterSourceNet();
    void crossToNextPin();
    void enterNextComponent();
    void enterNet(int net, int arrival, std::size_t additionalNodesBefore);
    void leaveNet();
    void collectAdditionalNodes(int net, int arrival);
    void dropAdditionalNodes(std::size_t countBefore);
    const NodeList &additionalNodesAsList();
    qsizetype additionalNodeCount() const { return static_cast<qsizetype>(additionalNodes.size()); }
    void keepPath();

    const NetlistIndex &index;
    const SearchRules &rules;
    BorrowedMemory borrowed;
    SearchMemory &memory;
    IterativeDeepening deepening;
    SearchBounds bounds;
    std::vector<Level> branch;
    std::vector<const QSharedPointer<EDANetNode> *> additionalNodes; ///< of the branch
    /// The same, or empty while no path has needed them. Paths that have the same nodes share it.
    NodeList additionalNodeList;
    FoundPaths paths;
};
}

#endif
