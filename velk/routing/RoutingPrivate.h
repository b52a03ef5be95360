#ifndef VELK_ROUTING_ROUTINGPRIVATE_H
#define VELK_ROUTING_ROUTINGPRIVATE_H

#include <velk/model/EDAProvider.h>
#include <velk/routing/NodeWithComponent.h>
#include <velk/search/RoutingRules.h>

#include <QList>
#include <QSharedData>
#include <QString>

#include <functional>

namespace Velk {

class NetlistIndex;
struct SearchRules;

/// What a Routing was told, shared by its copies until one of them is told something else.
class RoutingPrivate : public QSharedData
{
public:
    RoutingPrivate(EDAProvider *netlist, const RoutingRules &routingRules, const QList<QString> &typesOfConnectors)
        : provider(netlist)
        , rules(routingRules)
        , connectorTypes(typesOfConnectors)
    {
    }

    /// The paths between ends that the index has, as RoutingPath or TracedPath.
    template <typename Path>
    QList<Path> search(const NetlistIndex &index, const RoutingRules &rulesOfSearch, const SearchRules &numbered) const;
    /// The same by asking the provider at each step.
    template <typename Path>
    QList<Path> searchExhaustively(const RoutingRules &rulesOfSearch, const NodeWithComponent &source,
                                   const NodeWithComponent &destination) const;
    /// How many there are.
    qsizetype count(const NetlistIndex &index, const RoutingRules &rulesOfSearch, const SearchRules &numbered) const;
    qsizetype countExhaustively(const RoutingRules &rulesOfSearch, const NodeWithComponent &source,
                                const NodeWithComponent &destination) const;
    /// That of the provider, null where it has none.
    const NetlistIndex *providerIndex() const;
    /// The same; null while the trace is on, which shows every net that an exhaustive search visits.
    const NetlistIndex *searchedIndex() const;
    RoutingRules tracedRules() const
    {
        RoutingRules traced = rules;
        traced.relayContacts = relayContacts;
        return traced;
    }
    void exclude(const QList<QString> &componentRefs, const QList<QString> &netNames);
    /// What of this the provider lacks.
    QList<QString> unknownExclusions() const;
    bool isConnector(const EDAComponent &component) const
    {
        return connectorTypes.contains(component.type(), Qt::CaseInsensitive);
    }

    EDAProvider *provider;
    RoutingRules rules;                                  ///< for paths as drawn
    QSharedPointer<const RelayContactMap> relayContacts; ///< for traced ones; may be null
    QList<QString> connectorTypes;
    std::function<bool()> isCalledOff; ///< may be empty
};
}

#endif
