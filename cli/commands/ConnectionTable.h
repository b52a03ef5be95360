#ifndef VELK_CLI_COMMANDS_CONNECTIONTABLE_H
#define VELK_CLI_COMMANDS_CONNECTIONTABLE_H

#include <velk/model/EDAProvider.h>
#include <velk/switching/CsvTable.h>
#include <velk/switching/ExpectedConnections.h>

namespace VelkCli {

/// Connections that are meant to be at a time.
struct ConnectionStep
{
    QString name;
    QList<Velk::ExpectedConnection> connections;
    QList<int> rows;    ///< of the connections in the step, from 0; an empty row is one too
    QStringList places; ///< of the connections in the table: "connections.csv:3"
};

/// The steps of a table with the columns "from", "from pin", "to" and "to pin", and "step". A component is its
/// reference, which may lack the number of the netlist where one only has it, or, with a "=" in it, properties
/// "KEY=VALUE;KEY=VALUE"; a pin is its number or else its name. A row in which all four are empty connects nothing.
///
/// Throws a CommandError for what is not there and for a pin on no net, and an EDAException where a column is missing.
/// Messages name what else fits.
QList<ConnectionStep> connectionStepsOf(const Velk::CsvTable &table, const Velk::EDAProvider &netlist,
                                        const Velk::SwitchingModel &model);
}

#endif
