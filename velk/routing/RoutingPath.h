#ifndef VELK_ROUTING_ROUTINGPATH_H
#define VELK_ROUTING_ROUTINGPATH_H

#include <velk/model/EDAComponent.h>
#include <velk/model/EDANetNode.h>

#include <QList>
#include <QSharedPointer>

namespace Velk {

/// One way from the source pin to the destination pin: a plain value. Without switching components the two
/// pins lie on one net.
struct RoutingPath
{
    /// The components to switch on, from the source side to the destination side. A component with more than
    /// two pins appears once for each path, whichever of its pins the path leaves it by.
    QList<QSharedPointer<EDAComponent>> switchingComponents;
    /// Pins of other interface components that the path connects too, in the order in which they were met.
    QList<QSharedPointer<EDANetNode>> additionalNodes;
};
}

#endif
