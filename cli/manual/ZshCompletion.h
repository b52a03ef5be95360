#ifndef VELK_CLI_MANUAL_ZSHCOMPLETION_H
#define VELK_CLI_MANUAL_ZSHCOMPLETION_H

#include "cli/manual/CommandDescription.h"

namespace VelkCli {

/// A function file for a folder in fpath.
QString zshCompletion(const CommandDescription &command);
}

#endif
