#ifndef VELK_ROUTING_PRUNEDPATHSEARCH_H
#define VELK_ROUTING_PRUNEDPATHSEARCH_H

#include <velk/routing/FoundPaths.h>
#include <velk/routing/SearchBounds.h>

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
        qsizetype additionalNodesBefore; ///< how many the branch had before this net
    };

    void searchOnce();
    void enterSourceNet();
    void crossToNextPin();
    void enterNextComponent();
    void enterNet(int net, int arrival, qsizetype additionalNodesBefore);
    void leaveNet();
    void collectAdditionalNodes(int net, int arrival);
    void keepPath();

    const NetlistIndex &index;
    const SearchRules &rules;
    SearchMemory &memory;
    IterativeDeepening deepening;
    SearchBounds bounds;
    std::vector<Level> branch;
    QList<QSharedPointer<EDANetNode>> additionalNodes; ///< of the branch; shared by all paths that have the same
    FoundPaths paths;
};
}

#endif
