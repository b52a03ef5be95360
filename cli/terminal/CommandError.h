#ifndef VELK_CLI_TERMINAL_COMMANDERROR_H
#define VELK_CLI_TERMINAL_COMMANDERROR_H

#include <QString>

namespace VelkCli {

constexpr int exitFailure = 2;

/// Ends the command with one line on standard error and the exit status exitFailure.
struct CommandError
{
    QString message; ///< what is wrong and in which file, without a line break
};
}

#endif
