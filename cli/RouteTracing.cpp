#include "cli/RouteTracing.h"

#include <QBitArray>

using namespace Velk;

namespace VelkCli {

/// A net on the way, and which of the ways through the next component were tried: from each entry pin to each exit.
/// They are not listed, since there are as many as pairs of its pins. An exit that leads nowhere does so from every
/// entry.
struct RouteTracing::Branch
{
    qsizetype net;
    QString ref;
    QStringList entries;
    QList<PinOnNet> exits;
    QBitArray givenUp;           ///< for each exit
    qsizetype connectedNets = 0; ///< how many of the route were known before
    qsizetype routesBefore = 0;  ///< how many were found before
    qsizetype entry = 0;
    qsizetype exit = -1;

    bool advance()
    {
        while (entry < entries.size()) {
            if (++exit == exits.size()) {
                ++entry;
                exit = -1;
            } else if (!givenUp.at(exit) && exits.at(exit).second != entries.at(entry)) {
                return true;
            }
        }
        return false;
    }
    void giveUpExit() { givenUp.setBit(exit); }
    qsizetype nextNet() const { return exits.at(exit).first; }
    Crossing crossing() const { return {net, nextNet(), ref, entries.at(entry), exits.at(exit).second}; }
};

RouteTracing::RouteTracing(const RouteReport &routes)
    : report(routes)
    , nets(routes.netlist.getNets())
{
    QSet<QString> crossed;
    for (const RoutingPath &path : report.paths) {
        for (const auto &component : path.switchingComponents)
            crossed.insert(component->ref);
    }
    for (qsizetype number = 0; number < nets.size(); ++number) {
        for (const auto &node : std::as_const(nets.at(number)->nodes)) {
            const Pin pin{node->ref, node->pin};
            // As in the search, a node lies on the first net that holds it, but ends a path on any.
            if (!netOfPin.contains(pin))
                netOfPin.insert(pin, number);
            if (node->matches(report.destination->ref, report.destination->pin))
                lastNets.insert(number);
            if (crossed.contains(node->ref))
                entryPins[{node->ref, number}].append(node->pin);
            const auto component = report.netlist.getComponentByRef(node->ref);
            if (component && report.interfaceTypes.contains(component->type(), Qt::CaseInsensitive))
                interfacePins[number].append(pin);
        }
    }
    for (const QString &ref : std::as_const(crossed))
        addExitPins(*report.netlist.getComponentByRef(ref));
}

void RouteTracing::addExitPins(const EDAComponent &component)
{
    auto &exits = exitPins[component.ref];
    const auto part = report.netlist.getPartByName(component.part);
    for (const auto &pin : std::as_const(part->pins)) {
        const qsizetype net = netOfPin.value({component.ref, pin->number}, -1);
        if (net >= 0)
            exits.append({net, pin->number});
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
    QList<Branch> branches{branch(*path.switchingComponents.first(), first, {report.source->ref, report.source->pin})};
    while (!branches.isEmpty() && result.size() < count) {
        Branch &last = branches.last();
        route.crossings.resize(branches.size() - 1);
        route.connectedNets.resize(last.connectedNets);
        if (!last.advance()) {
            const bool isInVain = last.routesBefore == result.size();
            branches.removeLast();
            if (!route.crossings.isEmpty())
                visited.remove(route.crossings.last().to);
            if (isInVain && !branches.isEmpty())
                branches.last().giveUpExit();
            continue;
        }
        const bool mustEnd = branches.size() == length;
        if (isLast(last.nextNet()) != mustEnd || visited.contains(last.nextNet())) {
            last.giveUpExit();
            continue;
        }
        const Crossing crossing = last.crossing();
        route.crossings.append(crossing);
        if (mustEnd) {
            if (route.connectedNets.size() == path.additionalNodes.size())
                result.append(route);
        } else if (collect(path, crossing, route)) {
            visited.insert(crossing.to);
            branches.append(
                branch(*path.switchingComponents.at(branches.size()), crossing.to, {crossing.ref, crossing.exitPin}));
            branches.last().connectedNets = route.connectedNets.size();
            branches.last().routesBefore = result.size();
        }
    }
    return result;
}

RouteTracing::Branch RouteTracing::branch(const EDAComponent &component, qsizetype net, const Pin &arrival) const
{
    const auto exits = exitPins.value(component.ref);
    Branch branch{net, component.ref, entryPins.value({component.ref, net}), exits, QBitArray(exits.size())};
    if (arrival.first == component.ref)
        branch.entries.removeAll(arrival.second);
    return branch;
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
