#ifndef VELK_CLI_COMMANDS_EXCLUSIONOPTIONS_H
#define VELK_CLI_COMMANDS_EXCLUSIONOPTIONS_H

#include "cli/commands/SystemFileOptions.h"

#include <velk/routing/Routing.h>

namespace VelkCli {

/// The options of every command that searches: which components and nets it keeps out of.
struct ExclusionOptions
{
    std::vector<std::string> components; ///< references, or properties of all that are meant
    std::vector<std::string> nets;       ///< names

    void addTo(CLI::App &command, SystemFileOptions &system);
    /// Has searches on the netlist keep out of what the options name there. Throws a CommandError for a name that is
    /// not there, with what comes nearest.
    void applyTo(Velk::Routing &routing, const Velk::EDAProvider &netlist) const;
};
}

#endif
