#ifndef VELK_CLI_COMMANDS_CHECKCOMMAND_H
#define VELK_CLI_COMMANDS_CHECKCOMMAND_H

#include "cli/commands/RelayOptions.h"

namespace VelkCli {

/// velk check: what is probably not as it is meant.
class CheckCommand
{
public:
    /// Adds the subcommand with its options to \a app.
    explicit CheckCommand(CLI::App &app);

    bool isChosen() const;
    /// Returns the exit status: 0 when nothing is found, 1 when something is. Throws a CommandError.
    int run() const;

private:
    QString placeOf(const QString &note) const;

    NetlistOptions netlist;
    RelayOptions relays;
    std::vector<std::string> dutTypes;
    std::vector<std::string> ignored;
    std::vector<std::string> accepted; ///< by the system file
    bool showsAll = false;
    CLI::App *command;
};
}

#endif
