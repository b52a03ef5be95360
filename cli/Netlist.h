#ifndef VELK_CLI_NETLIST_H
#define VELK_CLI_NETLIST_H

#include <velk/provider/MultipleEDAProvider.h>

#include <QStringList>

namespace VelkCli {

/// Reads the files and joins them at connectors of these types. Throws a CommandError that names the file for
/// the first one that cannot be read or is no netlist.
Velk::MultipleEDAProvider loadNetlists(const QStringList &fileNames, const QStringList &connectorTypes);

/// How people name a pin: "U1#1.HI" by its name, or by its number where the name is empty or could be taken
/// for another pin of the component.
QString pinText(const Velk::EDAProvider &netlist, const QString &ref, const QString &pinNumber);
}

#endif
