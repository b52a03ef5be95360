#ifndef VELK_CLI_CHECK_NAMECHECKS_H
#define VELK_CLI_CHECK_NAMECHECKS_H

#include "velk/check/CheckedSystem.h"
#include "velk/check/Finding.h"

namespace VelkCli {

/// Names and values of properties that look like typing errors for others.
QList<Finding> nameFindings(const CheckedSystem &system);
}

#endif
