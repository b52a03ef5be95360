#include "cli/commands/CsvFile.h"

#include "cli/commands/InputFile.h"
#include "cli/commands/Netlist.h"

using namespace Velk;

namespace VelkCli {

CsvTable readCsv(const QString &fileName)
{
    return {readInput(fileName), shownName(fileName)};
}
}
