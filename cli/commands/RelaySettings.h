#ifndef VELK_CLI_COMMANDS_RELAYSETTINGS_H
#define VELK_CLI_COMMANDS_RELAYSETTINGS_H

#include <velk/model/EDAProvider.h>
#include <velk/switching/CsvTable.h>
#include <velk/switching/SwitchingModel.h>

namespace VelkCli {

/// The positions that relays are to take at a time.
struct RelayStep
{
    QString name;
    std::vector<int> positions; ///< of each gang of the model; those that nothing is said of are at rest
};

/// The step "1" of --set, from texts "REF" or "REF=POSITION". A position is its number or else its name, 1 if left out;
/// a reference may lack the number of the netlist where one only has it. Throws a CommandError for what is not there,
/// for what takes no position, and for two positions of one gang.
RelayStep stepOf(const QStringList &settings, const Velk::EDAProvider &netlist, const Velk::SwitchingModel &model);

/// The steps of a table with the columns "component" and "position", which hold the same, and "step". A row in which
/// both are empty sets nothing. Throws an EDAException where a column is missing.
QList<RelayStep> relayStepsOf(const Velk::CsvTable &table, const Velk::EDAProvider &netlist,
                              const Velk::SwitchingModel &model);
}

#endif
