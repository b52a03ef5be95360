#ifndef VELK_MODEL_ELEMENTOWNER_H
#define VELK_MODEL_ELEMENTOWNER_H

#include <velk/VelkExport.h>
#include <velk/model/EDAComponent.h>
#include <velk/model/EDANet.h>
#include <velk/model/EDAPart.h>

#include <QList>
#include <QSharedPointer>

namespace Velk {

/// What a provider of Velk's own is besides an EDAProvider when its lists hold copies: it has the originals for those
/// that only read them, in the same order. Not for use or implementation outside the library.
class VELK_EXPORT ElementOwner
{
public:
    virtual ~ElementOwner();

    virtual QList<QSharedPointer<EDANet>> ownNets() const = 0;             ///< those of EDAProvider::getNets()
    virtual QList<QSharedPointer<EDAComponent>> ownComponents() const = 0; ///< those of EDAProvider::getComponents()
    virtual QList<QSharedPointer<EDAPart>> ownParts() const = 0;           ///< those of EDAProvider::getParts()

protected:
    ElementOwner();
    ElementOwner(const ElementOwner &other);
    ElementOwner &operator=(const ElementOwner &other);
};
}

#endif
