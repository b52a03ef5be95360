#include <velk/routing/NetlistReach.h>

#include <QSet>

#include <algorithm>

namespace Velk {

NetlistReach::NetlistReach(const RoutingPrivate &configuredRouting, const Node &sourceNode, const Node &destinationNode)
    : routing(configuredRouting)
    , netlist(*configuredRouting.provider)
    , exclusions(netlist, configuredRouting.rules.exclusions)
    , interruption(configuredRouting.isCalledOff)
    , source(sourceNode)
    , destination(destinationNode)
{
    const auto allNets = netlist.getNets();
    for (const auto &net : allNets) {
        if (!net)
            continue;
        interruption.work(1 + static_cast<std::size_t>(net->nodes.size()));
        for (const auto &node : std::as_const(net->nodes)) {
            if (node)
                addNode(*node, nets.size());
        }
        nets.append(net);
    }
    // A route does not begin by crossing the component of its source at that pin, but may end so at the other end.
    sourceDistances = distances(source, false);
    destinationDistances = distances(destination, true);
}

void NetlistReach::addNode(const EDANetNode &node, qsizetype net)
{
    // As in the search, the first net that holds a node is that of its pin.
    const std::pair pin(node.ref, node.pin);
    if (!netOfPin.contains(pin))
        netOfPin.insert(pin, net);
    netsOfComponent[node.ref].append(net);
}

PathReach NetlistReach::fromSource() const
{
    return reach(sourceDistances, source);
}

PathReach NetlistReach::fromDestination() const
{
    return reach(destinationDistances, destination);
}

QList<QSharedPointer<EDAComponent>> NetlistReach::componentsBetween() const
{
    int fewest = -1;
    for (qsizetype net = 0; net < nets.size(); ++net) {
        const int first = sourceDistances.of.at(net);
        const int second = destinationDistances.of.at(net);
        if (first >= 0 && second >= 0 && (fewest < 0 || first + second < fewest))
            fewest = first + second;
    }
    if (fewest <= 0)
        return {};
    QList<QSharedPointer<EDAComponent>> result;
    const auto components = netlist.getComponents();
    for (const auto &component : components) {
        if (!component)
            continue;
        const int before = distance(sourceDistances, component->ref);
        const int behind = distance(destinationDistances, component->ref);
        if (kindOf(*component) == Kind::Other && before >= 0 && behind >= 0 && before + 1 + behind == fewest)
            result.append(component);
    }
    std::stable_sort(result.begin(), result.end(), [this](const auto &a, const auto &b) {
        return distance(sourceDistances, a->ref) < distance(sourceDistances, b->ref);
    });
    return result;
}

NetlistReach::Kind NetlistReach::kindOf(const EDAComponent &component) const
{
    if (exclusions.hasComponent(component) || netlist.getPartByName(component.part).isNull())
        return Kind::NotCrossed; // without a part it has no other pins
    const ComponentRole role = routing.rules.roles.of(component.type());
    if (role.isSwitchable)
        return Kind::Switchable;
    return role.isInterface || routing.isConnector(component) ? Kind::NotCrossed : Kind::Other;
}

NetlistReach::Distances NetlistReach::distances(const Node &end, bool canCrossEnd)
{
    Distances result{QList<int>(nets.size(), -1), {}};
    const qsizetype first = netOfPin.value({end->ref, end->pin}, -1);
    QList<qsizetype> layer; // all of one distance
    if (first >= 0)
        layer.append(first);
    Entries entries;
    for (int distance = 0; !layer.isEmpty(); ++distance) {
        QList<qsizetype> next;
        for (qsizetype i = 0; i < layer.size(); ++i) {
            const qsizetype net = layer.at(i);
            if (result.of.at(net) >= 0 || exclusions.hasNet(*nets.at(net)))
                continue;
            result.of[net] = distance;
            if (distance == 0)
                result.nearby.append(net);
            const auto ways = crossings(net, net == first && !canCrossEnd ? end : Node(), entries);
            layer += ways.overSwitchables;
            next += ways.overOthers;
        }
        layer = next;
    }
    return result;
}

NetlistReach::Ways NetlistReach::crossings(qsizetype net, const Node &excluded, Entries &entries)
{
    Ways result;
    interruption.work(static_cast<std::size_t>(nets.at(net)->nodes.size()));
    for (const auto &node : std::as_const(nets.at(net)->nodes)) {
        if (!node)
            continue;
        const auto component = netlist.getComponentByRef(node->ref);
        const Kind kind = component && node != excluded ? kindOf(*component) : Kind::NotCrossed;
        if (kind != Kind::NotCrossed)
            (kind == Kind::Switchable ? result.overSwitchables : result.overOthers) +=
                exits(*component, node->pin, entries);
    }
    return result;
}

// All but the entry are reached by the first crossing, the entry itself by the next, and then there is nothing left:
// else components of thousands of pins would take long.
QList<qsizetype> NetlistReach::exits(const EDAComponent &component, const QString &entry, Entries &entries)
{
    const auto crossed = entries.find(component.ref);
    QStringList pins;
    if (crossed == entries.end()) {
        entries.insert(component.ref, entry);
        const auto part = netlist.getPartByName(component.part);
        interruption.work(static_cast<std::size_t>(part->pins.size()));
        for (const auto &pin : std::as_const(part->pins)) {
            if (pin && pin->number != entry)
                pins.append(pin->number);
        }
    } else if (*crossed != entry && !crossed->isNull()) {
        pins.append(std::exchange(*crossed, QString()));
    }
    QList<qsizetype> result;
    for (const QString &pin : std::as_const(pins)) {
        const qsizetype net = netOfPin.value({component.ref, pin}, -1);
        if (net >= 0)
            result.append(net);
    }
    return result;
}

/// Of the nearest net at which the component lies; -1 if none is reached.
int NetlistReach::distance(const Distances &distances, const QString &ref) const
{
    int result = -1;
    for (const qsizetype net : netsOfComponent.value(ref)) {
        const int distance = distances.of.at(net);
        if (distance >= 0 && (result < 0 || distance < result))
            result = distance;
    }
    return result;
}

PathReach NetlistReach::reach(const Distances &distances, const Node &end) const
{
    PathReach result;
    for (const qsizetype net : distances.nearby) {
        result.nets.append(nets.at(net));
        result.unpluggedPins += unpluggedPins(*nets.at(net));
    }
    result.isAlone = isAlone(end);
    const qsizetype net = netOfPin.value({end->ref, end->pin}, -1);
    result.isExcluded = net >= 0 && exclusions.hasNet(*nets.at(net));
    return result;
}

bool NetlistReach::isAlone(const Node &end) const
{
    const auto netsOfEnd = netsOfComponent.value(end->ref);
    return std::all_of(netsOfEnd.cbegin(), netsOfEnd.cend(), [&](qsizetype net) {
        return !nets.at(net)->containsNode(end) || nets.at(net)->otherNodes(end).isEmpty();
    });
}

QList<NetlistReach::Node> NetlistReach::unpluggedPins(const EDANet &net) const
{
    QHash<std::pair<QString, QString>, QSet<QString>> plugs; // references by Identifier and pin number
    QList<std::pair<Node, QString>> connectorPins;
    for (const auto &node : net.nodes) {
        const auto component = node ? netlist.getComponentByRef(node->ref) : nullptr;
        if (component.isNull())
            continue;
        plugs[{component->identifier(), node->pin}].insert(node->ref);
        if (routing.isConnector(*component))
            connectorPins.append({node, component->identifier()});
    }
    QList<Node> result;
    for (const auto &[node, identifier] : std::as_const(connectorPins)) {
        if (plugs.value({identifier, node->pin}).size() == 1)
            result.append(node);
    }
    return result;
}
}
