#ifndef VELK_CLI_MANUAL_COMPLETIONS_H
#define VELK_CLI_MANUAL_COMPLETIONS_H

#include "cli/commands/CommandDescription.h"

namespace VelkCli {

/// A script for the package bash-completion, whose functions it uses.
QString bashCompletion(const CommandDescription &command);
QString fishCompletion(const CommandDescription &command);
/// A function file for a folder in fpath.
QString zshCompletion(const CommandDescription &command);
}

#endif
