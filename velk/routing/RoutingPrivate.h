#ifndef VELK_ROUTING_ROUTINGPRIVATE_H
#define VELK_ROUTING_ROUTINGPRIVATE_H

#include <velk/model/EDAProvider.h>
#include <velk/routing/NodeWithComponent.h>
#include <velk/search/RoutingRules.h>

#include <QSharedData>

namespace Velk {

/// What a Routing was told, shared by its copies until one of them is told something else.
class RoutingPrivate : public QSharedData
{
public:
    RoutingPrivate(EDAProvider *netlist, const RoutingRules &routingRules)
        : provider(netlist)
        , rules(routingRules)
    {
    }

    /// The paths as RoutingPath or TracedPath.
    template <typename Path>
    QList<Path> search(const NodeWithComponent &source, const NodeWithComponent &destination) const;

    EDAProvider *provider;
    RoutingRules rules;
};
}

#endif
