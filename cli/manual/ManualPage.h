#ifndef VELK_CLI_MANUAL_MANUALPAGE_H
#define VELK_CLI_MANUAL_MANUALPAGE_H

#include "cli/commands/CommandDescription.h"

namespace VelkCli {

/// The manual page of the command in section 1. It bears no date, so that it is the same in every build.
QString manualPage(const CommandDescription &command);
}

#endif
