#ifndef VELK_CLI_PAGES_BASHCOMPLETION_H
#define VELK_CLI_PAGES_BASHCOMPLETION_H

#include "cli/pages/CommandDescription.h"

namespace VelkCli {

/// A script for the package bash-completion, whose functions it uses.
QString bashCompletion(const CommandDescription &command);
}

#endif
