#ifndef VELK_CLI_COMMANDS_LISTCOMMAND_H
#define VELK_CLI_COMMANDS_LISTCOMMAND_H

#include "cli/commands/RelayOptions.h"

namespace VelkCli {

/// velk list: what was read and joined.
class ListCommand
{
public:
    /// Adds the subcommand with its options to \a app.
    explicit ListCommand(CLI::App &app);

    bool isChosen() const;
    /// Returns the exit status 0, also when the list is empty. Throws a CommandError.
    int run() const;

private:
    NetlistOptions netlist;
    RelayOptions relays;
    std::string what;
    bool showsPositions = false;
    std::vector<std::string> where;
    CLI::App *command;
};
}

#endif
