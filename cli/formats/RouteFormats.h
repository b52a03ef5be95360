#ifndef VELK_CLI_FORMATS_ROUTEFORMATS_H
#define VELK_CLI_FORMATS_ROUTEFORMATS_H

#include "cli/commands/Netlist.h"
#include "cli/formats/CsvWriter.h"
#include "cli/terminal/Colour.h"

#include <velk/model/EDAProvider.h>
#include <velk/naming/PinNames.h>
#include <velk/routing/NoPathReason.h>
#include <velk/routing/RoutingPath.h>
#include <velk/routing/TracedPath.h>

#include <QByteArray>

#include <optional>

namespace VelkCli {

/// The answer to one query, with the netlist that it came from. Drawings and pages need traced paths; the other forms
/// do with those of a fifth of their size.
struct RouteReport
{
    const Velk::EDAProvider &netlist;
    QSharedPointer<Velk::EDANetNode> source;
    QSharedPointer<Velk::EDANetNode> destination;
    QList<Velk::RoutingPath> paths;
    QList<Velk::TracedPath> tracedPaths;
    bool areThereMore; ///< than these paths
    Velk::PinNames pinNames;
    QStringList fileNames;      ///< of the boards
    QStringList connectorTypes; ///< of the components at which boards are joined
    QStringList interfaceTypes; ///< of the components whose pins are additional nodes
    int maxSwitches;
    int maxConnections;
    QStringList switchableTypes = {};
    std::optional<Velk::NoPathReason> reason = std::nullopt; ///< where there are no paths
    QString failure = {};                                    ///< why the reason could not be found out; mostly empty
};

/// "1 switch"
QString switchCount(qsizetype count);

/// A numbered line for each route and a line with the count, which also tells whether there are more.
QByteArray routesToText(const RouteReport &report, const Colour &colour);

/// {"routes": [{"switchingComponents": [component], "additionalConnections": [{"component", "pin"}]}]}, and besides
/// "more": true if there are more, and "reason" if there is none
void routesToJson(const RouteReport &report, QIODevice &device);

/// A row for each route; cells that list several things separate them with blanks.
void routesToCsv(const RouteReport &report, CsvReader reader, QIODevice &device);
}

#endif
