#ifndef VELK_CLI_OUTPUT_H
#define VELK_CLI_OUTPUT_H

#include <QByteArray>
#include <QString>

namespace VelkCli {

/// Writes to \a fileName, or to standard output where that is empty. A file is written whole or left as it
/// was. Throws a CommandError when that fails.
void writeOutput(const QString &fileName, const QByteArray &bytes);
}

#endif
