#ifndef VELK_CLI_COMMANDS_ROUTESCOMMAND_H
#define VELK_CLI_COMMANDS_ROUTESCOMMAND_H

#include "cli/commands/RouteEnd.h"
#include "cli/commands/SearchOptions.h"

namespace VelkCli {

/// velk routes: the routes between two pins.
class RoutesCommand
{
public:
    /// Adds the subcommand with its options to \a app.
    explicit RoutesCommand(CLI::App &app);

    bool isChosen() const;
    /// Returns the exit status: 0 when there are routes, 1 when there are none. Throws a CommandError.
    int run() const;

private:
    QStringList required(const Velk::EDAProvider &provider) const;
    Velk::Routing routingOn(Velk::EDAProvider &provider) const;

    NetlistOptions netlist;
    SearchOptions search;
    std::vector<std::string> through;
    EndOptions source{"--source", "source component"};
    EndOptions dut{"--dut", "DUT component"};
    int maxRoutes = 0;
    bool trace = false;
    CLI::App *command;
};
}

#endif
