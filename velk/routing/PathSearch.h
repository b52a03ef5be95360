#ifndef VELK_ROUTING_PATHSEARCH_H
#define VELK_ROUTING_PATHSEARCH_H

#include <velk/model/EDAProvider.h>
#include <velk/routing/ElementExclusions.h>
#include <velk/routing/NodeWithComponent.h>
#include <velk/routing/RoutingPath.h>
#include <velk/routing/StepPositions.h>
#include <velk/routing/TracedPath.h>
#include <velk/search/Interruption.h>
#include <velk/search/IterativeDeepening.h>
#include <velk/search/RoutingRules.h>

#include <QSet>

#include <functional>
#include <vector>

namespace Velk {

/// The depth-first search of one query. The current branch lies on a stack of its own, so that its depth is
/// bounded by memory and not by the program's stack.
class PathSearch
{
public:
    /// The first three have to stay.
    PathSearch(const EDAProvider &netlist, const RoutingRules &routingRules, Interruption &searchInterruption,
               const NodeWithComponent &sourceNode, const QSharedPointer<EDANetNode> &destinationNode);

    /// Calls \a keep with each path, in the order in which they are found; with the first ones in the order of results
    /// if their number is bounded. Call it once. Throws EDASearchCalledOffException.
    void run(const std::function<void()> &keep);
    /// The path that is to be kept, as RoutingPath or TracedPath.
    template <typename Path>
    Path path();

private:
    /// A net on the current branch and what is still to be crossed from it.
    struct Level
    {
        QSharedPointer<EDANet> net; ///< kept alive while it counts as visited, so that no other gets its address
        QSharedPointer<EDANetNode> arrival; ///< by which it was reached
        std::size_t additionalNodesBefore;
        QList<NodeWithComponent> entries;          ///< switchable components that are not yet crossed
        NodeWithComponent crossed;                 ///< the one being crossed, with the node by which it is entered
        QList<QSharedPointer<EDANetNode>> exits{}; ///< its pins that are not yet left by
    };

    void searchOnce();
    void searchNode(const QSharedPointer<EDAComponent> &component, const QSharedPointer<EDANetNode> &node);
    void crossNextComponent(Level &level);
    void leaveNet();
    void keepPath(const QSharedPointer<EDANet> &net, const QSharedPointer<EDANetNode> &node);

    QSharedPointer<EDANet> findNetContainingNode(const QSharedPointer<EDANetNode> &node) const;
    QList<NodeWithComponent> otherNodesWithComponentOfNet(const QSharedPointer<EDANet> &net,
                                                          const QSharedPointer<EDANetNode> &node) const;
    QList<NodeWithComponent> switchableNodes(const QSharedPointer<EDANet> &net,
                                             const QSharedPointer<EDANetNode> &node) const;
    void collectAdditionalNodes(const QSharedPointer<EDANet> &net, const QSharedPointer<EDANetNode> &node);
    QList<QSharedPointer<EDANetNode>> getOtherNodesOfComponent(const QSharedPointer<EDAComponent> &component,
                                                               const QString &pinNumber) const;
    QList<QSharedPointer<EDANetNode>> possibleExits(const NodeWithComponent &entry,
                                                    const QList<QSharedPointer<EDANetNode>> &exits);
    QList<TracedStep> stepsOfBranch(const QString &lastExitPin) const;
    bool pathLimitReached();
    bool crossesRequired() const;
    void logNodeSearch(const QSharedPointer<EDAComponent> &component, const QSharedPointer<EDANet> &net,
                       bool found) const;

    const EDAProvider &provider;
    const RoutingRules &rules;
    Interruption &interruption;
    const QSharedPointer<EDAComponent> sourceComponent;
    const PathEnds<QSharedPointer<EDANetNode>> ends;
    StepPositions positions;
    const ElementExclusions exclusions;

    IterativeDeepening deepening;
    QList<Level> branch;
    QSet<const EDANet *> visited; ///< the nets of the branch; identity decides, equal nets are different ones
    std::vector<QSharedPointer<EDANetNode>> additionalNodes; ///< of the whole branch
    QSharedPointer<EDANet> lastNet;                          ///< of the path that is to be kept
    QSharedPointer<EDANetNode> lastArrival;                  ///< by which that was reached
    std::function<void()> keepCurrent;
};

template <>
RoutingPath PathSearch::path();
template <>
TracedPath PathSearch::path();
}

#endif
