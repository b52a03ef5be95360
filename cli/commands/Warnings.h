#ifndef VELK_CLI_COMMANDS_WARNINGS_H
#define VELK_CLI_COMMANDS_WARNINGS_H

#include <QStringList>

namespace VelkCli {

/// Prints each on a line of standard error; of many that differ in names alone the first ones, and how many more there
/// are. A warning is "PLACE: TEXT" with names in single quotes.
void printWarnings(const QStringList &warnings);
}

#endif
