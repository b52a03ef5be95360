#ifndef VELK_ROUTING_NETLISTREACH_H
#define VELK_ROUTING_NETLISTREACH_H

#include <velk/routing/ElementExclusions.h>
#include <velk/routing/NoPathReason.h>
#include <velk/routing/RoutingPrivate.h>
#include <velk/search/Interruption.h>

#include <QHash>

#include <utility>

namespace Velk {

/// How far one gets from the two ends of a search, by its rules, on any provider.
class NetlistReach
{
public:
    using Node = QSharedPointer<EDANetNode>;

    /// The configuration has to stay. Throws EDASearchCalledOffException.
    NetlistReach(const RoutingPrivate &configuredRouting, const Node &sourceNode, const Node &destinationNode);

    PathReach fromSource() const;
    PathReach fromDestination() const;

    /// For ends that are not connected: NoPathReason::between.
    QList<QSharedPointer<EDAComponent>> componentsBetween() const;

private:
    struct Distances
    {
        QList<int> of;           ///< by net: how many components of other types are to be crossed, -1 if none will do
        QList<qsizetype> nearby; ///< the nets of distance 0, the nearest first
    };
    struct Ways
    {
        QList<qsizetype> overSwitchables; ///< nets
        QList<qsizetype> overOthers;
    };
    using Entries = QHash<QString, QString>; ///< the pin by which a component was crossed first

    enum class Kind
    {
        Switchable,
        Other,
        NotCrossed
    };

    void addNode(const EDANetNode &node, qsizetype net);
    Kind kindOf(const EDAComponent &component) const;
    Distances distances(const Node &end, bool canCrossEnd);
    Ways crossings(qsizetype net, const Node &excluded, Entries &entries);
    QList<qsizetype> exits(const EDAComponent &component, const QString &entry, Entries &entries);
    int distance(const Distances &distances, const QString &ref) const;
    PathReach reach(const Distances &distances, const Node &end) const;
    bool isAlone(const Node &end) const;
    QList<Node> unpluggedPins(const EDANet &net) const;

    const RoutingPrivate &routing;
    const EDAProvider &netlist;
    const ElementExclusions exclusions;
    Interruption interruption;
    const Node source;
    const Node destination;
    QList<QSharedPointer<EDANet>> nets;
    QHash<std::pair<QString, QString>, qsizetype> netOfPin; ///< by reference and number
    QHash<QString, QList<qsizetype>> netsOfComponent;
    Distances sourceDistances;
    Distances destinationDistances;
};
}

#endif
