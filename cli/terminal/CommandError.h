#ifndef VELK_CLI_TERMINAL_COMMANDERROR_H
#define VELK_CLI_TERMINAL_COMMANDERROR_H

#include <QString>

#include <functional>

namespace VelkCli {

constexpr int exitFailure = 2;

/// Ends the command with one line on standard error and the exit status exitFailure.
struct CommandError
{
    QString message; ///< what is wrong and in which file, without a line break
};

/// What \a run returns or, after that line, exitFailure where it throws a CommandError or any standard exception.
int exitStatusOf(const std::function<int()> &run);
}

#endif
