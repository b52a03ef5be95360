#ifndef VELK_CLI_COMMANDS_COMPLETION_H
#define VELK_CLI_COMMANDS_COMPLETION_H

#include "cli/commands/CommandDescription.h"

namespace VelkCli {

/// What the last of \a words, which stand between "velk" and the cursor, can become, in the order of the definitions:
/// for each candidate its word and, where there is one, a tab and the description. Of "--format=js" only what follows
/// the sign is completed. For a value without choices the one line is a tab and what stands for the value, as
/// "\tFILE": the shells know which of them are files.
QStringList completions(const CommandDescription &command, const QStringList &words);
}

#endif
