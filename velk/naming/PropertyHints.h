#ifndef VELK_NAMING_PROPERTYHINTS_H
#define VELK_NAMING_PROPERTYHINTS_H

#include <velk/VelkExport.h>
#include <velk/model/EDAComponent.h>

#include <QList>
#include <QMap>
#include <QString>

namespace Velk {

/// Why none of the components has all of these properties: a key that none has, with the keys that there are, a value
/// that none has, with the values that there are, or which component comes nearest. None of them is null.
VELK_EXPORT QString whyNoneMatches(const QList<QSharedPointer<EDAComponent>> &components,
                                   const QMap<QString, QString> &wanted);
}

#endif
