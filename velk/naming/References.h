#ifndef VELK_NAMING_REFERENCES_H
#define VELK_NAMING_REFERENCES_H

#include <velk/VelkExport.h>
#include <velk/model/EDAComponent.h>
#include <velk/model/References.h>

#include <QList>
#include <QSharedPointer>
#include <QStringList>

namespace Velk {

/// The references of the components, of which none is null, in their order.
VELK_EXPORT QStringList refsOf(const QList<QSharedPointer<EDAComponent>> &components);
}

#endif
