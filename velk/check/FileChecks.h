#ifndef VELK_CLI_CHECK_FILECHECKS_H
#define VELK_CLI_CHECK_FILECHECKS_H

#include "cli/commands/Netlist.h"
#include "velk/check/Finding.h"

namespace VelkCli {

/// Netlists that are given twice, by the same file or by a copy of it.
QList<Finding> fileFindings(const QStringList &files);
/// What the netlists, read from the files, list more than once, so that not all of it holds.
QList<Finding> repetitionFindings(const QStringList &files, const Netlists &netlists);
}

#endif
