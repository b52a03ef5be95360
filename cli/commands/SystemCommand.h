#ifndef VELK_CLI_COMMANDS_SYSTEMCOMMAND_H
#define VELK_CLI_COMMANDS_SYSTEMCOMMAND_H

#include "cli/commands/Options.h"

namespace VelkCli {

/// velk system: the system file.
class SystemCommand
{
public:
    /// Adds the subcommand with its own subcommand to \a app.
    explicit SystemCommand(CLI::App &app);

    bool isChosen() const;
    /// Writes the file and returns the exit status 0. Throws a CommandError.
    int run() const;

private:
    void checkOutput() const;

    std::vector<std::string> netlists;
    std::string outputFile;
    bool overwrites = false;
    CLI::App *command;
};
}

#endif
