#ifndef VELK_CLI_TERMINAL_MESSAGE_H
#define VELK_CLI_TERMINAL_MESSAGE_H

#include <QString>

namespace VelkCli {

/// The text with its control characters but tabs as \xNN and those that turn the direction of text as \uNNNN, so that
/// no name in a netlist can steer a terminal, make lines of its own or turn the rest of a line around. For all that
/// people read.
QString printable(const QString &text);

/// One line on standard error.
void printMessage(const QString &line);
}

#endif
