#ifndef VELK_CLI_SUGGESTIONS_H
#define VELK_CLI_SUGGESTIONS_H

#include <QString>
#include <QStringList>

namespace VelkCli {

/// Each of the texts once, those that come nearest to \a written first: those that contain it or are contained in it,
/// then those that are like it. Upper and lower case make no difference; equally near ones stay in their order.
QStringList nearestFirst(const QString &written, const QStringList &texts);

/// "A, B, C and 23 more"; "none" where there are none.
QString enumeration(const QStringList &texts);
}

#endif
