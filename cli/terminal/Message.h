#ifndef VELK_CLI_TERMINAL_MESSAGE_H
#define VELK_CLI_TERMINAL_MESSAGE_H

#include <QString>

namespace VelkCli {

/// One line on standard error.
void printMessage(const QString &line);
}

#endif
