#ifndef VELK_CLI_FORMATS_ROUTEREPORT_H
#define VELK_CLI_FORMATS_ROUTEREPORT_H

#include <velk/model/EDAProvider.h>
#include <velk/naming/PinNames.h>
#include <velk/routing/Routing.h>
#include <velk/switching/SwitchingModel.h>

#include <QStringList>

#include <optional>

namespace VelkCli {

/// The answer to one query, with the netlist that it came from.
struct RouteReport
{
    const Velk::EDAProvider &netlist;
    Velk::Routing routing; ///< as it has searched
    QSharedPointer<Velk::EDANetNode> source;
    QSharedPointer<Velk::EDANetNode> destination;
    Velk::PinNames pinNames;
    QStringList fileNames;                         ///< of the boards
    std::optional<Velk::SwitchingModel> switching; ///< what relays can do; empty where ways as drawn were asked for
    /// Of one of these the routes, traced wherever pins or positions are told; the others are a fifth of the size.
    QList<Velk::RoutingPath> paths = {};
    QList<Velk::TracedPath> tracedPaths = {};
    bool areThereMore = false; ///< than these paths
    /// The ways as drawn that no state of the relays makes; where there are more routes, of as many ways as there are
    /// routes here. Empty where to count them would take long, and where no form of the answer tells it.
    std::optional<qsizetype> leftOut = std::nullopt;
    std::optional<Velk::NoPathReason> reason = std::nullopt; ///< where there are no paths
    QString failure = {};                                    ///< why the reason could not be found out; mostly empty

    qsizetype routeCount() const { return paths.size() + tracedPaths.size(); }
};
}

#endif
