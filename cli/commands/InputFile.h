#ifndef VELK_CLI_COMMANDS_INPUTFILE_H
#define VELK_CLI_COMMANDS_INPUTFILE_H

#include <QByteArray>
#include <QString>

namespace VelkCli {

/// What is in the file, "-" being standard input. Throws a CommandError where it cannot be read.
QByteArray readInput(const QString &fileName);
}

#endif
