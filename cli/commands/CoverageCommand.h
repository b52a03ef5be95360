#ifndef VELK_CLI_COMMANDS_COVERAGECOMMAND_H
#define VELK_CLI_COMMANDS_COVERAGECOMMAND_H

#include "cli/commands/SearchOptions.h"

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
    NetlistOptions netlist;
    SearchOptions search;
    std::vector<std::string> sourceProperties;
    std::vector<std::string> dutProperties;
    std::string savedFile;
    int jobs = 0;
    bool isCriticalAsked = false;
    CLI::App *command;
};
}

#endif
