#include <velk/facade/RouteRecords.h>

#include <velk/facade/StandardTypes.h>

namespace Velk {

namespace {

/// Bounds the memory of those that are kept. A system has more, but a test program asks for the same again and again.
constexpr std::size_t maxKeptRecords = 20000;
}

RouteRecords::RouteRecords(const EDAProvider &netlist)
    : provider(netlist)
{
}

std::vector<VelkRoutingPath> RouteRecords::of(const QList<RoutingPath> &paths)
{
    std::vector<VelkRoutingPath> records;
    records.reserve(static_cast<std::size_t>(paths.size()));
    for (const auto &path : paths)
        records.push_back(of(path));
    if (components.size() + connections.size() > maxKeptRecords) {
        components.clear();
        connections.clear();
    }
    return records;
}

VelkRoutingPath RouteRecords::of(const RoutingPath &path)
{
    VelkRoutingPath record;
    record.switchingComponents.reserve(static_cast<std::size_t>(path.switchingComponents.size()));
    for (const auto &component : path.switchingComponents)
        record.switchingComponents.push_back(of(component));
    record.additionalConnections.reserve(static_cast<std::size_t>(path.additionalNodes.size()));
    for (const auto &node : path.additionalNodes) {
        if (const auto &connection = of(node))
            record.additionalConnections.push_back(*connection);
    }
    return record;
}

const VelkComponentInfo &RouteRecords::of(const QSharedPointer<EDAComponent> &component)
{
    const auto known = components.find(component.data());
    return known != components.end() ? known->second
                                     : components.emplace(component.data(), toStandard(*component)).first->second;
}

const std::optional<VelkConnectionInfo> &RouteRecords::of(const QSharedPointer<EDANetNode> &node)
{
    const auto known = connections.find(node.data());
    return known != connections.end() ? known->second
                                      : connections.emplace(node.data(), connectionAt(*node)).first->second;
}

std::optional<VelkConnectionInfo> RouteRecords::connectionAt(const EDANetNode &node)
{
    const auto component = provider.getComponentByRef(node.ref);
    const auto part = component ? provider.getPartByName(component->part) : nullptr;
    if (part.isNull())
        return std::nullopt;
    const auto pin = part->getPinByNumber(node.pin);
    return VelkConnectionInfo{of(component), pin ? toStandard(*pin) : VelkPinInfo{}};
}
}
