#ifndef VELK_CLI_MESSAGE_H
#define VELK_CLI_MESSAGE_H

#include <QString>

namespace VelkCli {

/// The text with its control characters but tabs as \xNN, so that no name in a netlist can steer a terminal or make
/// lines of its own. For all that people read; JSON, CSV and drawings have escapes of their own.
QString printable(const QString &text);

/// One line on standard error.
void printMessage(const QString &line);
}

#endif
