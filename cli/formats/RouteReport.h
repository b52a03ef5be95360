#ifndef VELK_CLI_FORMATS_ROUTEREPORT_H
#define VELK_CLI_FORMATS_ROUTEREPORT_H

#include <velk/model/EDAProvider.h>
#include <velk/naming/PinNames.h>
#include <velk/routing/Routing.h>

#include <QStringList>

#include <optional>

namespace VelkCli {

/// The answer to one query, with the netlist that it came from. Drawings and pages need traced paths; the other forms
/// do with those of a fifth of their size.
struct RouteReport
{
    const Velk::EDAProvider &netlist;
    Velk::Routing routing; ///< as it has searched
    QSharedPointer<Velk::EDANetNode> source;
    QSharedPointer<Velk::EDANetNode> destination;
    Velk::PinNames pinNames;
    QStringList fileNames; ///< of the boards
    QList<Velk::RoutingPath> paths = {};
    QList<Velk::TracedPath> tracedPaths = {};
    bool areThereMore = false;                               ///< than these paths
    std::optional<Velk::NoPathReason> reason = std::nullopt; ///< where there are no paths
    QString failure = {};                                    ///< why the reason could not be found out; mostly empty
};
}

#endif
