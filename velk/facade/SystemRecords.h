#ifndef VELK_FACADE_SYSTEMRECORDS_H
#define VELK_FACADE_SYSTEMRECORDS_H

#include <velk/check/Finding.h>
#include <velk/coverage/CoverageMatrix.h>
#include <velk/facade/SystemSwitching.h>
#include <velk/facade/VelkSystem.h>
#include <velk/model/TextNumbers.h>
#include <velk/provider/MultipleEDAProvider.h>
#include <velk/routing/NoPathReason.h>
#include <velk/routing/TracedPath.h>
#include <velk/switching/StateConnections.h>

#include <vector>

namespace Velk {

/// Makes the records of answers. It turns the texts of all parts' pins at once, to be copied into answers, and then
/// changes no more.
class SystemRecords
{
public:
    /// \a netlist must stay as it is.
    explicit SystemRecords(const MultipleEDAProvider &netlist);

    static VelkPartInfo of(const EDAPart &part);
    VelkNetInfo of(const EDANet &net) const;
    std::vector<VelkPlacedPin> pinsOf(const EDAComponent &component) const;
    /// Positions have their names, and unknown relays are marked, by \a switching; null for a way as drawn.
    VelkRoute of(const TracedPath &path, const SystemSwitching *switching) const;
    VelkNoRouteReason of(const NoPathReason &reason, const SystemSwitching *switching) const;
    static VelkRelayPositions of(const SwitchingModel &model, int component);
    VelkConnections of(const StateConnections &connections) const;
    VelkCoverage of(const CoverageMatrix &matrix, const QList<QList<int>> &rows,
                    const QList<CriticalPairs> &critical) const;
    static VelkFinding of(const Finding &finding);
    VelkNodeInfo nodeOf(const QString &ref, const QString &pin) const;

private:
    VelkPinInfo pinOf(const EDAComponent &component, const QString &number) const;
    std::vector<std::vector<VelkNodeInfo>> of(const QList<QList<InterfacePin>> &sets) const;
    std::vector<VelkNodeInfo> of(const QList<NodeWithComponent> &pins) const;
    VelkRouteStep of(const TracedStep &step, const SystemSwitching *switching) const;
    VelkReach of(const PathReach &reach) const;
    std::string nameOfNetAt(const EDAComponent &component, const QString &pin) const;

    /// The first pin of each number.
    struct PinRecords
    {
        TextNumbers<QString> numbers;
        std::vector<VelkPinInfo> pins;
    };

    const MultipleEDAProvider &provider;
    TextNumbers<QString> partNames;
    std::vector<PinRecords> pinsOfParts;
};
}

#endif
