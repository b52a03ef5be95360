#ifndef VELKPLANNING_CONNECTIONPLAN_H
#define VELKPLANNING_CONNECTIONPLAN_H

#include <velk/switching/SwitchingModel.h>

#include <QList>

#include <vector>

namespace Velk {

/// What is known of a request.
enum class PlanResult
{
    Optimal,    ///< a plan, and that none is better
    Feasible,   ///< a plan, but the time was up before it was known whether there is a better one
    Impossible, ///< there is no plan
    Unknown,    ///< the time was up before one was found, or what stands against it
};

/// Connections that are tied together, with all that they reach.
struct PlannedGroup
{
    std::vector<int> connections; ///< by their positions in the request, ascending
    QList<InterfacePin> pins;     ///< that were asked for, each once, by reference, then number; of any component
    std::vector<int> through;     ///< passives, by their positions in the model, ascending
    std::vector<int> nets;        ///< its extent: all that it reaches, ascending
    QList<InterfacePin> sideConnections; ///< pins in it that are there because they are allowed, in the same order
};

/// Groups and pins that passives couple.
struct PlannedCoupling
{
    std::vector<int> groups;   ///< by their positions in the plan, ascending; one at least
    QList<InterfacePin> pins;  ///< of interfaces, in the extent of no group, in their order
    std::vector<int> passives; ///< with a net in it, gone through by no group, ascending
};

/// The answer to a request, with numbers of the model. A plain value.
struct ConnectionPlan
{
    PlanResult result; ///< tells which of the others hold something

    // Of a plan:
    std::vector<int> positions;               ///< of each gang
    QList<PlannedGroup> groups;               ///< in the order of their first connections
    QList<PlannedCoupling> couplings;         ///< in the order of their first nets
    QList<QList<InterfacePin>> alsoConnected; ///< pins in no extent that are not connected at rest, by their pins
    std::vector<int> unknown; ///< components whose positions are not known and that touch an extent, ascending

    // Where there is none:
    /// Connections of which there is no plan, but one without any single one of them; ascending.
    std::vector<int> conflict;
    /// Nets of which more groups of the conflict need one each than there are; ascending. Empty where lines do not run
    /// out, as far as it was found.
    std::vector<int> bottleneck;
};
}

#endif
