#ifndef VELK_NAMING_SUGGESTIONS_H
#define VELK_NAMING_SUGGESTIONS_H

#include <velk/VelkExport.h>

#include <QString>
#include <QStringList>

namespace Velk {

/// Each of the texts once, those that come nearest to \a written first: those that contain it or are contained in it,
/// then those that are like it. Upper and lower case make no difference; equally near ones stay in their order.
VELK_EXPORT QStringList nearestFirst(const QString &written, const QStringList &texts);

/// "A, B, C and 23 more"; "none" where there are none.
VELK_EXPORT QString enumeration(const QStringList &texts);
}

#endif
