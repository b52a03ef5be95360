#ifndef VELK_FACADE_ROUTERECORDS_H
#define VELK_FACADE_ROUTERECORDS_H

#include <velk/facade/VelkRouting.h>
#include <velk/model/EDAProvider.h>
#include <velk/routing/RoutingPath.h>

#include <optional>
#include <unordered_map>
#include <vector>

namespace Velk {

/// Makes the records that callers without Qt get. Turning a component's texts into standard strings takes longer than
/// finding a route over it, so what has been turned is kept to be copied into later answers.
class RouteRecords
{
public:
    /// \a netlist must stay, and hand out the same objects at every call.
    explicit RouteRecords(const EDAProvider &netlist);

    std::vector<VelkRoutingPath> of(const QList<RoutingPath> &paths);

private:
    VelkRoutingPath of(const RoutingPath &path);
    const VelkComponentInfo &of(const QSharedPointer<EDAComponent> &component);
    const std::optional<VelkConnectionInfo> &of(const QSharedPointer<EDANetNode> &node);
    std::optional<VelkConnectionInfo> connectionAt(const EDANetNode &node);

    const EDAProvider &provider;
    std::unordered_map<const EDAComponent *, VelkComponentInfo> components;
    std::unordered_map<const EDANetNode *, std::optional<VelkConnectionInfo>> connections; ///< none for unknown ones
};
}

#endif
