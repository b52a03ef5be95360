#ifndef VELK_CLI_COMMANDS_NETLIST_H
#define VELK_CLI_COMMANDS_NETLIST_H

#include <velk/kicad/KiCadNetlistFile.h>
#include <velk/provider/MultipleEDAProvider.h>

#include <QList>
#include <QStringList>

#include <memory>

namespace VelkCli {

using Netlists = QList<Velk::KiCadNetlistFile>;

/// Reads the files. Throws a CommandError that names the file for the first one that cannot be read or is no netlist.
/// Prints the warnings of reading.
Netlists readNetlists(const QStringList &fileNames, Velk::KiCadReadingMode mode);

/// Joins them at connectors of these types.
Velk::MultipleEDAProvider joined(const Netlists &netlists, const QStringList &connectorTypes);

/// Reads the files, "-" being standard input, and joins them.
Velk::MultipleEDAProvider loadNetlists(const QStringList &fileNames, const QStringList &connectorTypes,
                                       Velk::KiCadReadingMode mode);

/// One file as it is, without the suffix "#1", or several joined.
std::shared_ptr<Velk::EDAProvider> loadOneOrJoin(const QStringList &fileNames, const QStringList &connectorTypes,
                                                 Velk::KiCadReadingMode mode);

/// As messages name the file: "standard input" for "-".
QString shownName(const QString &fileName);
QStringList shownNames(const QStringList &fileNames);
}

#endif
