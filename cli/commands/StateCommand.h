#ifndef VELK_CLI_COMMANDS_STATECOMMAND_H
#define VELK_CLI_COMMANDS_STATECOMMAND_H

#include "cli/commands/RelayOptions.h"

namespace VelkCli {

/// velk state: what is connected while relays are set.
class StateCommand
{
public:
    /// Adds the subcommand with its options to \a app.
    explicit StateCommand(CLI::App &app);

    bool isChosen() const;
    /// Returns the exit status: 1 when what is connected is not what was expected, else 0. Throws a CommandError.
    int run() const;

private:
    QStringList tables() const;

    NetlistOptions netlist;
    RelayOptions relays;
    std::vector<std::string> settings;
    std::string tableFile;
    std::string expectedFile;
    CLI::App *command;
};
}

#endif
