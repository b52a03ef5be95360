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
    /// The components to switch on, from the source side to the destination side. A component of many pins
    /// may be crossed, and then listed, more than once. By which pins a path crosses it is not told, so paths
    /// that differ in that alone look the same.
    QList<QSharedPointer<EDAComponent>> switchingComponents;
    /// Pins of interface components that the path connects besides its two ends, in the order in which they
    /// were met; other pins of the source and of the destination component among them.
    QList<QSharedPointer<EDANetNode>> additionalNodes;
};
}

#endif
