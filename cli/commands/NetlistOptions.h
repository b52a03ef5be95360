#ifndef VELK_CLI_COMMANDS_NETLISTOPTIONS_H
#define VELK_CLI_COMMANDS_NETLISTOPTIONS_H

#include "cli/commands/SystemFileOptions.h"
#include "cli/formats/Format.h"

#include <string>
#include <vector>

namespace VelkCli {

/// The options that every command on netlists has.
struct NetlistOptions
{
    SystemFileOptions system;
    std::vector<std::string> files;
    std::vector<std::string> connectorTypes;
    std::vector<std::string> switchableTypes;
    std::vector<std::string> interfaceTypes;
    std::string format = "text";
    std::string outputFile;
    bool tolerant = false;
    bool isForSpreadsheets = false;

    /// With the types that the library has as defaults.
    NetlistOptions();
    /// Without --format the name of the output file decides, if it ends in one of the formats.
    void addTo(CLI::App &command, const std::vector<std::string> &formats);
    /// All that is read, for checkFiles().
    QStringList inputs() const;
    /// Throws a CommandError where the form has no cells.
    OutputTarget target() const;
};
}

#endif
