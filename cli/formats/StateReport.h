#ifndef VELK_CLI_FORMATS_STATEREPORT_H
#define VELK_CLI_FORMATS_STATEREPORT_H

#include <velk/model/EDAProvider.h>
#include <velk/naming/PinNames.h>
#include <velk/switching/ExpectedConnections.h>
#include <velk/switching/StateConnections.h>
#include <velk/switching/SwitchingModel.h>

#include <QStringList>

#include <optional>
#include <vector>

namespace VelkCli {

/// What was expected of a step and how it differs.
struct ExpectationReport
{
    QList<Velk::ExpectedConnection> connections;
    QList<int> rows; ///< of the connections in the step, from 0
    Velk::ComparedConnections compared;
};

/// What relays connect at a time.
struct StateStep
{
    QString name;
    std::vector<int> positions; ///< of each gang
    Velk::StateConnections connections;
    std::optional<ExpectationReport> expectation; ///< of all steps or of none
};

struct StateReport
{
    const Velk::EDAProvider &netlist;
    Velk::SwitchingModel model;
    Velk::PinNames pinNames;
    QStringList fileNames; ///< of the boards
    QList<StateStep> steps;
};
}

#endif
