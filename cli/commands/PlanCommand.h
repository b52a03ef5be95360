#ifndef VELK_CLI_COMMANDS_PLANCOMMAND_H
#define VELK_CLI_COMMANDS_PLANCOMMAND_H

#include "cli/commands/ExclusionOptions.h"
#include "cli/commands/RelayOptions.h"

#include <velkplanning/ConnectionRequest.h>

namespace VelkCli {

/// velk plan: which relays to set for several connections at once.
class PlanCommand
{
public:
    /// Adds the subcommand with its options to \a app.
    explicit PlanCommand(CLI::App &app);

    bool isChosen() const;
    /// Returns the exit status: 0 when each step has a plan, else 1. Throws a CommandError, or an EDAException as
    /// ConnectionPlanner does.
    int run() const;

private:
    Velk::ConnectionRequest requestOn(const Velk::EDAProvider &provider, const Velk::SwitchingModel &model) const;
    std::vector<int> allowedOn(const Velk::EDAProvider &provider, const Velk::SwitchingModel &model) const;

    std::string tableFile;
    NetlistOptions netlist;
    RelayOptions relays;
    ExclusionOptions exclusions;
    std::vector<std::string> allowed;
    bool allowsSideConnections = false;
    bool forbidsCouplings = false;
    bool trustsUnknown = false;
    bool wantsFewestChanges = false;
    double timeLimit = 0; ///< in seconds; 0 for none
    CLI::App *command;
};
}

#endif
