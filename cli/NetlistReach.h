#ifndef VELK_CLI_NETLISTREACH_H
#define VELK_CLI_NETLISTREACH_H

#include <velk/model/EDAProvider.h>

#include <QHash>
#include <QStringList>

#include <utility>

namespace VelkCli {

/// What the components of a netlist are to a search, each type in upper or lower case.
struct SearchedTypes
{
    QStringList switchables;
    QStringList interfaces;
    QStringList connectors;
};

/// How far one gets from a pin over switchable components.
struct Reach
{
    QStringList nets;  ///< the nearest first; none where the pin lies on no net
    QList<int> boards; ///< those with a pin on these nets, by number
    /// Of the connectors on these nets those without the same pin of another component with their Identifier there.
    QList<QSharedPointer<Velk::EDANetNode>> unpluggedPins;
    bool isAlone = false; ///< nothing else lies on the net of the pin
};

/// How far one gets from the two ends of a search, by its rules.
class NetlistReach
{
public:
    using Node = QSharedPointer<Velk::EDANetNode>;

    /// The netlist has to stay.
    NetlistReach(const Velk::EDAProvider &provider, const SearchedTypes &searchedTypes, const Node &sourceNode,
                 const Node &destinationNode);

    Reach fromSource() const;
    Reach fromDestination() const;

    /// For ends that are not connected: those components of other types, neither connectors nor interfaces, that lie on
    /// a way from end to end which crosses as few of them as possible. The nearest to the source come first.
    QList<QSharedPointer<Velk::EDAComponent>> componentsBetween() const;

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

    Kind kindOf(const Velk::EDAComponent &component) const;
    Distances distances(const Node &end, bool canCrossEnd) const;
    Ways crossings(qsizetype net, const Node &excluded, Entries &entries) const;
    QList<qsizetype> exits(const Velk::EDAComponent &component, const QString &entry, Entries &entries) const;
    int distance(const Distances &distances, const QString &ref) const;
    Reach reach(const Distances &distances, const Node &end) const;
    bool isAlone(const Node &end) const;
    QList<Node> unpluggedPins(const Velk::EDANet &net) const;

    const Velk::EDAProvider &netlist;
    const SearchedTypes types;
    const Node source;
    const Node destination;
    const QList<QSharedPointer<Velk::EDANet>> nets;
    QHash<std::pair<QString, QString>, qsizetype> netOfPin; ///< by reference and number
    QHash<QString, QList<qsizetype>> netsOfComponent;
    Distances sourceDistances;
    Distances destinationDistances;
};
}

#endif
