#ifndef VELK_CLI_MANUAL_BASHCOMPLETION_H
#define VELK_CLI_MANUAL_BASHCOMPLETION_H

#include "cli/manual/CommandDescription.h"

namespace VelkCli {

/// A script for the package bash-completion, whose functions it uses.
QString bashCompletion(const CommandDescription &command);
}

#endif
