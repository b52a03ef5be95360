#ifndef VELK_CLI_INIMISREADINGS_H
#define VELK_CLI_INIMISREADINGS_H

#include "cli/IniEntries.h"

#include <QStringList>

namespace VelkCli {

/// What Qt's QSettings or Python's configparser, as they are by default, do not read as it stands: "comma in the value,
/// misread by QSettings".
QStringList misreadingsOfSection(const QByteArray &section);
QStringList misreadingsOfEntry(const IniEntry &entry);
}

#endif
