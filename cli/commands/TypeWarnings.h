#ifndef VELK_CLI_COMMANDS_TYPEWARNINGS_H
#define VELK_CLI_COMMANDS_TYPEWARNINGS_H

#include "cli/commands/NetlistOptions.h"

#include <velk/model/EDAProvider.h>

namespace VelkCli {

/// A line for each type that the arguments name and no component has, with the types that there are, and for an empty
/// one, with what it means. The defaults need not occur. \a dutTypes and \a passiveTypes are those of the options
/// --dut-type and --passive, where there are such.
QStringList typeWarnings(const Velk::EDAProvider &provider, const NetlistOptions &options,
                         const std::vector<std::string> &dutTypes = {},
                         const std::vector<std::string> &passiveTypes = {});
}

#endif
