#ifndef VELK_ROUTING_NODEWITHCOMPONENT_H
#define VELK_ROUTING_NODEWITHCOMPONENT_H

#include <velk/model/EDAComponent.h>
#include <velk/model/EDANetNode.h>

#include <QSharedPointer>

namespace Velk {

/// A node of a net and the component that its reference names, both never null where the search makes one.
struct NodeWithComponent
{
    QSharedPointer<EDANetNode> node;        ///< where on the net
    QSharedPointer<EDAComponent> component; ///< whose pin it is
};
}

#endif
