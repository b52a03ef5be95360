#ifndef VELK_ROUTING_PRUNEDPATHSEARCH_H
#define VELK_ROUTING_PRUNEDPATHSEARCH_H

#include <velk/model/NetlistIndex.h>
#include <velk/routing/RoutingPath.h>

#include <vector>

namespace Velk {

/// What a Routing is set to, with the types resolved against an index.
struct PrunedSearchRules
{
    int maxNetsSearched; ///< nets on a branch that are searched further: one more than the limit of switches
    int maxAdditionalNodes;
    std::vector<bool> isSwitchable; ///< by type
    std::vector<bool> isInterface;  ///< by type
};

/// The search of one query on an index. It finds what PathSearch finds, in the same order, without entering branches
/// that cannot reach the destination within the limit: a breadth-first pass from the destination tells each net the
/// fewest switches that it needs at least.
class PrunedPathSearch
{
public:
    /// Source and destination are terminals.
    PrunedPathSearch(const NetlistIndex &netlist, const PrunedSearchRules &searchRules, int source, int destination);

    /// All paths in depth-first order. Call it once.
    QList<RoutingPath> run();

private:
    /// A net on the current branch and what is still to be crossed from it.
    struct Level
    {
        int net;
        int arrival; ///< terminal by which it was reached
        int nextNode;
        int component; ///< the one being crossed
        int entry;     ///< the terminal by which that is entered
        int nextPin;   ///< of it
        int endPin;
        QList<QSharedPointer<EDANetNode>>
            additionalNodes; ///< of the branch up to here; mostly shared with the level below
    };

    void measureDistances();
    void measureAcross(int net, int distance);
    void enterSourceNet();
    void crossToNextPin();
    void enterNextComponent();
    void leaveNet();
    void addPath();
    QList<QSharedPointer<EDANetNode>> additionalNodesWith(int net, int arrival) const;

    const NetlistIndex &index;
    const PrunedSearchRules &rules;
    const int source;
    const int destination;

    std::vector<Level> branch;
    QList<RoutingPath> paths;
};
}

#endif
