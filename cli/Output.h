#ifndef VELK_CLI_OUTPUT_H
#define VELK_CLI_OUTPUT_H

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace VelkCli {

/// Throws a CommandError where \a fileName is one of \a inputs, or a link to one.
void refuseToOverwrite(const QStringList &inputs, const QString &fileName);

/// Writes to \a fileName, or to standard output where that is empty. A file is written whole or left as it
/// was, also when the command is interrupted. Throws a CommandError when that fails.
void writeOutput(const QString &fileName, const QByteArray &bytes);
}

#endif
