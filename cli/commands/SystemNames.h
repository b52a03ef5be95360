#ifndef VELK_CLI_COMMANDS_SYSTEMNAMES_H
#define VELK_CLI_COMMANDS_SYSTEMNAMES_H

#include "cli/commands/Completion.h"

namespace VelkCli {

/// What the value can be in the system of the command line: the netlists on it, or those of the system file that a
/// command would take. None where there is no system, where it cannot be read, or where reading it would take long.
QStringList namesInSystem(const AskedValue &asked);
}

#endif
