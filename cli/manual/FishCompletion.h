#ifndef VELK_CLI_MANUAL_FISHCOMPLETION_H
#define VELK_CLI_MANUAL_FISHCOMPLETION_H

#include "cli/manual/CommandDescription.h"

namespace VelkCli {

QString fishCompletion(const CommandDescription &command);
}

#endif
