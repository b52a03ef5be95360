#ifndef VELK_FACADE_SYSTEMRECORDS_H
#define VELK_FACADE_SYSTEMRECORDS_H

#include <velk/check/Finding.h>
#include <velk/facade/VelkSystem.h>
#include <velk/provider/MultipleEDAProvider.h>
#include <velk/routing/NoPathReason.h>
#include <velk/routing/TracedPath.h>

#include <QHash>

#include <vector>

namespace Velk {

/// Makes the records of one answer. It looks up the pins of each part once.
class SystemRecords
{
public:
    /// \a netlist must stay.
    explicit SystemRecords(const MultipleEDAProvider &netlist);

    VelkPartInfo of(const EDAPart &part) const;
    VelkNetInfo of(const EDANet &net);
    std::vector<VelkPlacedPin> pinsOf(const EDAComponent &component) const;
    VelkRoute of(const TracedPath &path);
    VelkNoRouteReason of(const NoPathReason &reason);
    static VelkFinding of(const Finding &finding);

private:
    using PinsByNumber = QHash<QString, VelkPinInfo>;

    VelkPinInfo pinOf(const EDAComponent &component, const QString &number);
    VelkNodeInfo of(const EDANetNode &node);
    VelkReach of(const PathReach &reach);
    std::string nameOfNetAt(const EDAComponent &component, const QString &pin) const;

    const MultipleEDAProvider &provider;
    QHash<QString, PinsByNumber> pinsByPart;
};
}

#endif
