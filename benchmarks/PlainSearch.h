#ifndef VELK_BENCHMARKS_PLAINSEARCH_H
#define VELK_BENCHMARKS_PLAINSEARCH_H

#include <velk/model/EDAProvider.h>
#include <velk/routing/NodeWithComponent.h>
#include <velk/routing/RoutingPath.h>

#include <QSet>

namespace VelkBenchmarks {

/// The yardstick for a query on exported netlists: the routes found by asking the provider at every step, looking
/// through all nets for the one with a node, and following every branch to its limit. For the default types.
class PlainSearch
{
public:
    PlainSearch(const Velk::EDAProvider &searchedProvider, int limitOfSwitches, int limitOfAdditionalNodes);

    QList<Velk::RoutingPath> findPaths(const QMap<QString, QString> &sourceProperties, const QString &sourcePin,
                                       const QMap<QString, QString> &destinationProperties,
                                       const QString &destinationPin);

private:
    using Node = QSharedPointer<Velk::EDANetNode>;
    using Net = QSharedPointer<Velk::EDANet>;

    Node findNode(const QMap<QString, QString> &properties, const QString &pin) const;
    QList<Velk::RoutingPath> searchNode(const Node &node, QSet<const Velk::EDANet *> visited,
                                        QList<Node> additionalNodes) const;
    QList<Velk::RoutingPath> searchPaths(const Net &net, const Node &node, const QSet<const Velk::EDANet *> &visited,
                                         const QList<Node> &additionalNodes) const;
    Net netContaining(const Node &node) const;
    QList<Velk::NodeWithComponent> otherNodes(const Net &net, const Node &node) const;
    QList<Node> otherPins(const QSharedPointer<Velk::EDAComponent> &component, const QString &pin) const;

    const Velk::EDAProvider &provider;
    const int maxSwitches;
    const int maxAdditionalNodes;
    Node source;
    Node destination;
};
}

#endif
