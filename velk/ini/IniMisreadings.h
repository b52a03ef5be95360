#ifndef VELK_INI_INIMISREADINGS_H
#define VELK_INI_INIMISREADINGS_H

#include <QString>
#include <QStringList>

namespace Velk {

/// What Qt's QSettings or Python's configparser, as they are by default, do not read as it stands in the file: "comma
/// in the value is misread by QSettings".
QStringList misreadingsOfSection(const QString &section);
QStringList misreadingsOfEntry(const QString &writtenKey, const QString &writtenValue);
}

#endif
