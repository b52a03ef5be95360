#ifndef VELK_CLI_CHECK_CONNECTORCHECKS_H
#define VELK_CLI_CHECK_CONNECTORCHECKS_H

#include "velk/check/CheckedSystem.h"
#include "velk/check/Finding.h"

namespace VelkCli {

/// What is wrong where the netlists are plugged together.
QList<Finding> connectorFindings(const CheckedSystem &system);
}

#endif
