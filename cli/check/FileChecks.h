#ifndef VELK_CLI_CHECK_FILECHECKS_H
#define VELK_CLI_CHECK_FILECHECKS_H

#include "cli/check/Finding.h"

namespace VelkCli {

/// Netlists that are given twice, by the same file or by a copy of it.
QList<Finding> fileFindings(const QStringList &files);
}

#endif
