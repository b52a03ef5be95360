#ifndef VELK_CLI_COMMANDS_SEARCHOPTIONS_H
#define VELK_CLI_COMMANDS_SEARCHOPTIONS_H

#include "cli/commands/ExclusionOptions.h"
#include "cli/commands/NetlistOptions.h"
#include "cli/commands/RelayOptions.h"

#include <velk/routing/Routing.h>

#include <optional>

namespace VelkCli {

/// The options of every command that searches for routes: how far, and what they may cross.
struct SearchOptions
{
    int maxSwitches;
    int maxConnections;
    bool asDrawn = false;
    ExclusionOptions exclusions;
    RelayOptions relays;

    /// With the limits that the library has as defaults.
    SearchOptions();
    void addTo(CLI::App &command, SystemFileOptions &system);
    /// Searches for all ways as drawn, within these limits. Throws a CommandError as ExclusionOptions does.
    Velk::Routing routingOn(Velk::EDAProvider &netlist, const NetlistOptions &netlistOptions) const;
    /// What the relays can do, unless ways as drawn are asked for: nothing that is wrong with positions is in the way
    /// of these. Throws a CommandError as loadSwitching() does.
    std::optional<Velk::SwitchingModel> switchingOf(const Velk::EDAProvider &netlist,
                                                    const NetlistOptions &netlistOptions) const;
};
}

#endif
