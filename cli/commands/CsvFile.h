#ifndef VELK_CLI_COMMANDS_CSVFILE_H
#define VELK_CLI_COMMANDS_CSVFILE_H

#include <velk/switching/CsvTable.h>

namespace VelkCli {

/// The table in the file, "-" being standard input. Throws a CommandError where it cannot be read, or an EDAException
/// as CsvTable does.
Velk::CsvTable readCsv(const QString &fileName);
}

#endif
