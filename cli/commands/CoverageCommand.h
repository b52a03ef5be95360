#ifndef VELK_CLI_COMMANDS_COVERAGECOMMAND_H
#define VELK_CLI_COMMANDS_COVERAGECOMMAND_H

#include "cli/commands/RelayOptions.h"

#include <velk/routing/Routing.h>

namespace VelkCli {

/// velk coverage: which pins of sources reach which pins of DUTs.
class CoverageCommand
{
public:
    /// Adds the subcommand with its options to \a app.
    explicit CoverageCommand(CLI::App &app);

    bool isChosen() const;
    /// Returns the exit status: 1 when a comparison shows that pairs are lost or longer, else 0. Throws a CommandError.
    int run() const;

private:
    Velk::Routing routingOn(Velk::EDAProvider &provider) const;

    NetlistOptions netlist;
    RelayOptions relays;
    std::vector<std::string> sourceProperties;
    std::vector<std::string> dutProperties;
    std::string savedFile;
    int maxSwitches;
    int maxConnections;
    int jobs = 0;
    bool asDrawn = false;
    bool isCriticalAsked = false;
    CLI::App *command;
};
}

#endif
