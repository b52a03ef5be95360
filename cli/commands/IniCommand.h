#ifndef VELK_CLI_COMMANDS_INICOMMAND_H
#define VELK_CLI_COMMANDS_INICOMMAND_H

#include "cli/commands/SystemFileOptions.h"

#include <velk/model/EDAProvider.h>

#include <memory>

namespace VelkCli {

/// velk ini: the two INI files of the test system's resource manager.
class IniCommand
{
public:
    /// Adds the subcommand with its own subcommands to \a app.
    explicit IniCommand(CLI::App &app);

    bool isChosen() const;
    /// Returns the exit status 0. Throws a CommandError.
    int run() const;

private:
    void addReading(CLI::App &subcommand, SystemFileOptions &system);
    void addPhysical();
    void addApplication();
    int runPhysical() const;
    int runApplication() const;
    std::shared_ptr<Velk::EDAProvider> load(const std::vector<std::string> &files) const;

    SystemFileOptions physicalSystem;
    SystemFileOptions applicationSystem;
    std::vector<std::string> netlists;
    std::vector<std::string> types;
    std::vector<std::string> testSystemFiles;
    std::vector<std::string> applicationFiles;
    std::vector<std::string> dutTypes;
    std::vector<std::string> connectorTypes;
    std::string testSystemName;
    std::string applicationName;
    std::string outputFile;
    bool tolerant = false;
    CLI::App *command;
    CLI::App *physical;
    CLI::App *application;
};
}

#endif
