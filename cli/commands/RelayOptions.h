#ifndef VELK_CLI_COMMANDS_RELAYOPTIONS_H
#define VELK_CLI_COMMANDS_RELAYOPTIONS_H

#include "cli/commands/NetlistOptions.h"

#include <velk/switching/SwitchingModel.h>

namespace VelkCli {

/// The options of every command that knows what relays do.
struct RelayOptions
{
    std::vector<std::string> tables;
    std::vector<std::string> passiveTypes;
    QString placeOfTables; ///< of those from the system file, to be put before messages

    /// With the types that the library has as defaults.
    RelayOptions();
    void addTo(CLI::App &command, SystemFileOptions &system);
    /// Of --relays, for checkFiles().
    QStringList files() const;
    /// Throws a CommandError for one that cannot be read or is no such table.
    QList<Velk::RelayTable> readTables() const;
    /// By these options and by those of the other types.
    Velk::SwitchingTypes types(const NetlistOptions &netlistOptions) const;
};

/// As PositionsError::message(), with the first ones of many relays.
QString errorText(const Velk::PositionsError &error);

/// Warns of relays that are crossed although nobody knows their positions; there may be none.
void warnOfUnknown(const QStringList &relays);

/// The netlist as its relays make it. Prints what is wrong with the positions of relays, and throws a CommandError
/// then.
Velk::SwitchingModel loadSwitching(const Velk::EDAProvider &netlist, const NetlistOptions &netlistOptions,
                                   const RelayOptions &relayOptions);
}

#endif
