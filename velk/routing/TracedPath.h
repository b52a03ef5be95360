#ifndef VELK_ROUTING_TRACEDPATH_H
#define VELK_ROUTING_TRACEDPATH_H

#include <velk/model/EDAComponent.h>
#include <velk/model/EDANet.h>
#include <velk/model/EDANetNode.h>

#include <QList>
#include <QSharedPointer>
#include <QString>

namespace Velk {

/// One component that a path crosses, and by which pins. The nets and components are the provider's, never null.
struct TracedStep
{
    QSharedPointer<EDANet> net;             ///< from which it is crossed; the pin \a entryPin of the component is on it
    QString entryPin;                       ///< number of the pin by which it is entered, as the net has it
    QSharedPointer<EDAComponent> component; ///< the one to switch on
    QString exitPin;                        ///< number of the pin by which it is left, never that of \a entryPin
    /// With Routing::setRelayContacts() the position that a relay has to take, counted from 0, which is rest: the
    /// lowest that makes all steps of the path over relays of its gang. \a asDrawn without, and for what is not listed
    /// there.
    int position = asDrawn;

    static constexpr int asDrawn = -1; ///< no position is asked for
};

/// An additional node and where a path meets it.
struct TracedNode
{
    QSharedPointer<EDANetNode> node; ///< as RoutingPath::additionalNodes has it
    QSharedPointer<EDANet> net;      ///< one of the nets between the first and the last
};

/// A RoutingPath with the pins and nets that it passes: a plain value.
struct TracedPath
{
    /// From the source side to the destination side, one for each of RoutingPath::switchingComponents. The net of the
    /// first one is that of the source pin.
    QList<TracedStep> steps;
    QSharedPointer<EDANet> lastNet;    ///< the one that holds the destination pin; without steps the source pin too
    QList<TracedNode> additionalNodes; ///< in the order in which they were met

    /// The net to which the pin leads by which this step, counted from 0, leaves its component.
    const QSharedPointer<EDANet> &netAfter(qsizetype step) const
    {
        return step + 1 < steps.size() ? steps.at(step + 1).net : lastNet;
    }
};
}

#endif
