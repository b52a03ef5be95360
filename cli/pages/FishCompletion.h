#ifndef VELK_CLI_PAGES_FISHCOMPLETION_H
#define VELK_CLI_PAGES_FISHCOMPLETION_H

#include "cli/pages/CommandDescription.h"

namespace VelkCli {

QString fishCompletion(const CommandDescription &command);
}

#endif
