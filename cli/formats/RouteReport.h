#ifndef VELK_CLI_FORMATS_ROUTEREPORT_H
#define VELK_CLI_FORMATS_ROUTEREPORT_H

#include <velk/model/EDAProvider.h>
#include <velk/naming/PinNames.h>
#include <velk/routing/NoPathReason.h>
#include <velk/routing/RoutingPath.h>
#include <velk/routing/TracedPath.h>

#include <QStringList>

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
}

#endif
