#ifndef VELK_CLI_WARNINGS_H
#define VELK_CLI_WARNINGS_H

#include <QStringList>

namespace VelkCli {

/// Prints each on a line of standard error; of many the first ones, and how many more there are.
void printWarnings(const QStringList &warnings);
}

#endif
