#ifndef VELK_CLI_FORMATS_PLANREPORT_H
#define VELK_CLI_FORMATS_PLANREPORT_H

#include <velk/naming/PinNames.h>
#include <velk/provider/MultipleEDAProvider.h>
#include <velk/switching/ExpectedConnections.h>
#include <velk/switching/SwitchingModel.h>
#include <velkplanning/ConnectionRequest.h>
#include <velkplanning/PlannedStep.h>

#include <QStringList>

namespace VelkCli {

/// Connections that are to be there at once, and how they are.
struct PlanStep
{
    QString name;
    QList<Velk::ExpectedConnection> connections;
    QList<int> rows;    ///< of the connections in the step, from 0
    QStringList places; ///< of the connections in the table: "plan.csv:4"
    Velk::PlannedStep planned;

    bool hasPlan() const
    {
        return planned.plan.result == Velk::PlanResult::Optimal || planned.plan.result == Velk::PlanResult::Feasible;
    }
};

struct PlanReport
{
    const Velk::MultipleEDAProvider &netlist;
    Velk::SwitchingModel model;
    Velk::PinNames pinNames;
    QStringList fileNames; ///< of the boards
    Velk::PlanAim aim;
    QList<PlanStep> steps; ///< the relays are at rest before the first one
};
}

#endif
