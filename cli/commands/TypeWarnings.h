#ifndef VELK_CLI_COMMANDS_TYPEWARNINGS_H
#define VELK_CLI_COMMANDS_TYPEWARNINGS_H

#include "cli/commands/Options.h"

#include <velk/model/EDAProvider.h>

namespace VelkCli {

/// A line for each type that the arguments name and no component has, with the types that there are, and for an empty
/// one, with what it means. The defaults need not occur. \a dutTypes are those of the option --dut-type, where there is
/// one.
QStringList typeWarnings(const Velk::EDAProvider &provider, const NetlistOptions &options,
                         const std::vector<std::string> &dutTypes = {});
}

#endif
