#ifndef VELK_CLI_CHECK_CONNECTORCHECKS_H
#define VELK_CLI_CHECK_CONNECTORCHECKS_H

#include "cli/check/CheckedSystem.h"
#include "cli/check/Finding.h"

namespace VelkCli {

/// What is wrong where the netlists are plugged together.
QList<Finding> connectorFindings(const CheckedSystem &system);
}

#endif
