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

    /// The paths by these rules, as RoutingPath or TracedPath.
    template <typename Path>
    QList<Path> search(const RoutingRules &rulesOfSearch, const NodeWithComponent &source,
                       const NodeWithComponent &destination) const;
    /// The same, exhaustively where there is no index.
    template <typename Path>
    QList<Path> search(const NetlistIndex *index, const RoutingRules &rulesOfSearch, const NodeWithComponent &source,
                       const NodeWithComponent &destination) const;
    /// That of the provider, null where it has none.
    const NetlistIndex *providerIndex() const;
    bool isConnector(const EDAComponent &component) const
    {
        return connectorTypes.contains(component.type(), Qt::CaseInsensitive);
    }

    EDAProvider *provider;
    RoutingRules rules;
    QList<QString> connectorTypes;
    std::function<bool()> isCalledOff; ///< may be empty
};
}

#endif
