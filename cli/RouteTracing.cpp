#include "cli/RouteTracing.h"

using namespace Velk;

namespace VelkCli {

/// A net on the way, and how it may be left.
struct RouteTracing::Branch
{
    QList<Crossing> crossings;
    qsizetype next = 0;
    qsizetype connectedNets = 0; ///< how many of the route were known before
};

RouteTracing::RouteTracing(const RouteReport &routes)
    : report(routes)
    , nets(routes.netlist.getNets())
{
    for (qsizetype number = 0; number < nets.size(); ++number) {
        for (const auto &node : std::as_const(nets.at(number)->nodes)) {
            const Pin pin{node->ref, node->pin};
            // As in the search, a node lies on the first net that holds it, but ends a path on any.
            if (!netOfPin.contains(pin))
                netOfPin.insert(pin, number);
            if (node->matches(report.destination->ref, report.destination->pin))
                lastNets.insert(number);
            pinsOfComponent[node->ref].append({number, node->pin});
            const auto component = report.netlist.getComponentByRef(node->ref);
            if (component && report.interfaceTypes.contains(component->type(), Qt::CaseInsensitive))
                interfacePins[number].append(pin);
        }
    }
}

QList<TracedRoute> RouteTracing::traced() const
{
    QHash<std::pair<QStringList, QStringList>, QList<qsizetype>> alike;
    for (qsizetype i = 0; i < report.paths.size(); ++i) {
        const RoutingPath &path = report.paths.at(i);
        QStringList components;
        QStringList connections;
        for (const auto &component : path.switchingComponents)
            components.append(component->ref);
        for (const auto &node : path.additionalNodes)
            connections += {node->ref, node->pin};
        alike[{components, connections}].append(i);
    }
    QList<TracedRoute> result(report.paths.size());
    for (const auto &places : std::as_const(alike)) {
        const auto routes = trace(report.paths.at(places.first()), places.size());
        for (qsizetype i = 0; i < routes.size(); ++i)
            result[places.at(i)] = routes.at(i);
    }
    return result;
}

// Repeats the search along the path's components, by the same rules and in the same order.
QList<TracedRoute> RouteTracing::trace(const RoutingPath &path, qsizetype count) const
{
    const qsizetype length = path.switchingComponents.size();
    if (length == 0)
        return QList<TracedRoute>(count);
    QList<TracedRoute> result;
    TracedRoute route;
    const qsizetype first = netOf(*report.source);
    QSet<qsizetype> visited{first};
    QList<Branch> branches{
        {crossings(*path.switchingComponents.first(), first, {report.source->ref, report.source->pin})}};
    while (!branches.isEmpty() && result.size() < count) {
        Branch &branch = branches.last();
        route.crossings.resize(branches.size() - 1);
        route.connectedNets.resize(branch.connectedNets);
        if (branch.next == branch.crossings.size()) {
            branches.removeLast();
            if (!route.crossings.isEmpty())
                visited.remove(route.crossings.last().to);
            continue;
        }
        const Crossing crossing = branch.crossings.at(branch.next++);
        const bool mustEnd = branches.size() == length;
        if (isLast(crossing.to) != mustEnd || visited.contains(crossing.to))
            continue;
        route.crossings.append(crossing);
        if (mustEnd) {
            if (route.connectedNets.size() == path.additionalNodes.size())
                result.append(route);
        } else if (collect(path, crossing, route)) {
            visited.insert(crossing.to);
            const auto &component = *path.switchingComponents.at(branches.size());
            branches.append(
                {crossings(component, crossing.to, {crossing.ref, crossing.exitPin}), 0, route.connectedNets.size()});
        }
    }
    return result;
}

QList<Crossing> RouteTracing::crossings(const EDAComponent &component, qsizetype net, const Pin &arrival) const
{
    QList<Crossing> result;
    const auto part = report.netlist.getPartByName(component.part);
    const auto pins = pinsOfComponent.value(component.ref);
    for (const auto &[place, entry] : pins) {
        if (place != net || arrival == Pin(component.ref, entry))
            continue;
        for (const auto &exit : std::as_const(part->pins)) {
            const qsizetype exitNet = netOfPin.value({component.ref, exit->number}, -1);
            if (exit->number != entry && exitNet >= 0)
                result.append({net, exitNet, component.ref, entry, exit->number});
        }
    }
    return result;
}

// False where the net that is reached has other additional nodes than come next on the path.
bool RouteTracing::collect(const RoutingPath &path, const Crossing &crossing, TracedRoute &route) const
{
    const auto pins = interfacePins.value(crossing.to);
    for (const Pin &pin : pins) {
        if (pin == Pin(crossing.ref, crossing.exitPin) || pin == Pin(report.source->ref, report.source->pin))
            continue;
        const qsizetype known = route.connectedNets.size();
        if (known == path.additionalNodes.size() || !path.additionalNodes.at(known)->matches(pin.first, pin.second))
            return false;
        route.connectedNets.append(crossing.to);
    }
    return true;
}
}
