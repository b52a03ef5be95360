#ifndef VELK_CLI_COMMANDLINE_H
#define VELK_CLI_COMMANDLINE_H

#include "cli/commands/CheckCommand.h"
#include "cli/commands/CoverageCommand.h"
#include "cli/commands/IniCommand.h"
#include "cli/commands/ListCommand.h"
#ifdef VELK_HAS_PLANNING
#include "cli/commands/PlanCommand.h"
#endif
#include "cli/commands/RoutesCommand.h"
#include "cli/commands/StateCommand.h"
#include "cli/commands/SystemCommand.h"

#include <memory>

namespace CLI {
class App;
}

namespace VelkCli {

/// All that the command understands: its subcommands with their options. What CLI11 knows of them is also what the
/// manual page and the completions are made from.
class CommandLine
{
public:
    CommandLine();
    ~CommandLine();

    const CLI::App &definitions() const;
    /// Does what the arguments ask for and returns the exit status. Throws a CommandError.
    int run(int argc, char **argv);

private:
    int runChosen() const;

    std::unique_ptr<CLI::App> app;
    RoutesCommand routes;
    CoverageCommand coverage;
    StateCommand state;
#ifdef VELK_HAS_PLANNING
    PlanCommand plan;
#endif
    ListCommand list;
    CheckCommand check;
    IniCommand ini;
    SystemCommand system;
};
}

#endif
