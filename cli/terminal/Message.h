#ifndef VELK_CLI_TERMINAL_MESSAGE_H
#define VELK_CLI_TERMINAL_MESSAGE_H

#include <QString>
#include <QStringList>

namespace VelkCli {

/// One line on standard error.
void printMessage(const QString &line);

/// Prints each on a line of standard error; of many that differ in names alone the first ones, and how many more there
/// are. A warning is "PLACE: TEXT" with names in single quotes.
void printWarnings(const QStringList &warnings);
}

#endif
