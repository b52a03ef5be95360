#ifndef VELK_CLI_FORMATS_COVERAGEREPORT_H
#define VELK_CLI_FORMATS_COVERAGEREPORT_H

#include "cli/formats/FirstRoutes.h"

#include <velk/coverage/CoverageMatrix.h>
#include <velk/model/EDAProvider.h>
#include <velk/naming/PinNames.h>
#include <velk/routing/Routing.h>
#include <velk/switching/SwitchingModel.h>

#include <QStringList>

#include <optional>

namespace VelkCli {

/// Of each pair of pins so many routes are looked for at most, where they are counted.
constexpr qsizetype mostRoutesCounted = 10;

/// A pair of pins that is not as it was in a matrix that was saved before.
struct PairDifference
{
    QString source; ///< "U1#1.1"; it and the DUT pin may be in one of the two matrices only
    QString dut;
    int before; ///< the number of switches, or CoverageMatrix::unreached
    int now;
};

/// How a matrix differs from one that was saved before.
struct CoverageComparison
{
    QString fileName; ///< of the one before
    QList<PairDifference> lost;
    QList<PairDifference> gained;
    QList<PairDifference> longer;
    QList<PairDifference> shorter;
};

/// Who reaches whom, with the netlist that it came from.
struct CoverageReport
{
    const Velk::EDAProvider &netlist;
    Velk::Routing routing; ///< as it has searched
    Velk::PinNames pinNames;
    QStringList fileNames;                         ///< of the boards
    std::optional<Velk::SwitchingModel> switching; ///< what relays can do; empty where ways as drawn were asked for
    QList<Velk::NodeWithComponent> sources;
    QList<Velk::NodeWithComponent> duts;
    /// Of each source pin the number of switches to each DUT pin, or CoverageMatrix::unreached.
    QList<QList<int>> rows = {};
    QList<FirstRoutes> firstRoutes =
        {}; ///< of each source pin; empty ones where the form of the answer does not tell them
    /// Of the switchable components that are not kept out those that no first route crosses, but others do, and those
    /// that no route crosses, in the order of the netlist; where the form of the answer tells them.
    QList<QSharedPointer<Velk::EDAComponent>> onOtherRoutes = {};
    QList<QSharedPointer<Velk::EDAComponent>> onNoRoute = {};
    QStringList unknownRelays = {}; ///< that first routes cross although nobody knows their positions: references
    std::optional<QList<Velk::CriticalPairs>> critical = std::nullopt; ///< where asked for; most lost pairs first
    std::optional<CoverageComparison> comparison = std::nullopt;       ///< where asked for
};

/// "U1#1.1", by its number, as JSON and CSV have it.
inline QString nameOf(const Velk::NodeWithComponent &pin)
{
    return pin.node->ref + QLatin1Char('.') + pin.node->pin;
}
}

#endif
