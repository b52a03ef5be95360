#ifndef VELK_MODEL_EDAPROVIDER_H
#define VELK_MODEL_EDAPROVIDER_H

#include <velk/VelkExport.h>
#include <velk/model/EDAComponent.h>
#include <velk/model/EDANet.h>
#include <velk/model/EDAPart.h>

#include <QList>
#include <QMap>
#include <QSharedPointer>
#include <QString>

namespace Velk {

/// The source of a netlist, through which everything that consumes one sees it. Consumers take a raw pointer
/// and never own it: whoever creates a provider keeps it alive for as long as they run.
///
/// A look-up that finds nothing returns a null pointer; none throws or logs. Whether returned objects are the
/// provider's own or copies is each implementation's choice, so do not try to change a netlist through them.
///
/// Null pointers in the lists, also in those of a net's nodes and of a part's pins, are passed over by
/// MultipleEDAProvider and Routing.
class VELK_EXPORT EDAProvider
{
public:
    virtual ~EDAProvider();
    EDAProvider();
    EDAProvider(const EDAProvider &other);
    EDAProvider &operator=(const EDAProvider &other);

    /// All nets, as a list that is the caller's to keep and reorder. A node's net is the first in this order.
    /// The search recognises a net that it has visited by its object: an implementation that makes new
    /// objects at every call gets loops searched until a limit ends them.
    virtual QList<QSharedPointer<EDANet>> getNets() const = 0;

    /// All components, as a list that is the caller's.
    virtual QList<QSharedPointer<EDAComponent>> getComponents() const = 0;

    /// The component of exactly that reference, or null.
    virtual QSharedPointer<EDAComponent> getComponentByRef(const QString &ref) const = 0;

    /// The first component, in the order of getComponents(), that EDAComponent::matchesProperties accepts, or
    /// null. An empty map gives the first component of all.
    virtual QSharedPointer<EDAComponent> getComponentByProperties(const QMap<QString, QString> &properties) const = 0;

    /// All library parts, as a list that is the caller's.
    virtual QList<QSharedPointer<EDAPart>> getParts() const = 0;

    /// The part of exactly that name, or null.
    virtual QSharedPointer<EDAPart> getPartByName(const QString &name) const = 0;
};
}

#endif
