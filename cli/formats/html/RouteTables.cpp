#include "cli/formats/html/RouteTables.h"

#include "cli/formats/Json.h"
#include "cli/formats/RouteRelays.h"

#include <QHash>
#include <QMap>

#include <utility>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

RouteTables::RouteTables(const QList<QString> &typesOfConnectors, const EDAProvider &system, const PinNames &names,
                         const std::optional<SwitchingModel> &relays)
    : netlist(system)
    , pinNames(names)
    , switching(relays)
    , connectorTypes(typesOfConnectors)
{
}

qsizetype RouteTables::place(const QString &ref)
{
    return components.place(ref, [&] { return componentToJson(*netlist.getComponentByRef(ref)); });
}

qsizetype RouteTables::place(const EDANet &net)
{
    return nets.place(&net, [&] { return QJsonObject{{u"name"_s, net.name}, {u"joints"_s, joints(net)}}; });
}

qsizetype RouteTables::place(const TracedStep &step, const EDANet &next)
{
    return crossings.place({step.net.data(), &next, step.component->ref, step.entryPin, step.exitPin, step.position},
                           [&] { return crossing(step, next); });
}

QJsonObject RouteTables::crossing(const TracedStep &step, const EDANet &next)
{
    const QString &ref = step.component->ref;
    QJsonObject members{{u"component"_s, place(ref)},
                        {u"from"_s, place(*step.net)},
                        {u"to"_s, place(next)},
                        {u"entry"_s, pin(ref, step.entryPin)},
                        {u"exit"_s, pin(ref, step.exitPin)},
                        {u"position"_s, positionToJson(step)}};
    if (const QString position = positionText(switching, step); !position.isEmpty())
        members.insert(u"positionText"_s, position);
    if (taskOf(switching, step) == RelayTask::Unknown)
        members.insert(u"isUnknown"_s, true);
    return members;
}

qsizetype RouteTables::place(const TracedNode &pinOfNet)
{
    return pins.place({pinOfNet.net.data(), pinOfNet.node->ref, pinOfNet.node->pin},
                      [&] { return pinOnNet(*pinOfNet.node, *pinOfNet.net); });
}

QJsonArray RouteTables::ends(const QList<QSharedPointer<EDANetNode>> &nodes)
{
    QHash<std::pair<QString, QString>, const EDANet *> netOf; // by reference and pin number
    for (const auto &node : nodes)
        netOf.insert({node->ref, node->pin}, nullptr);
    const auto allNets = netlist.getNets();
    for (const auto &net : allNets) {
        for (const auto &node : std::as_const(net->nodes)) {
            const auto wanted = netOf.find({node->ref, node->pin});
            if (wanted != netOf.end() && *wanted == nullptr)
                *wanted = net.data();
        }
    }
    QJsonArray result;
    for (const auto &node : nodes) {
        const EDANet *net = netOf.value({node->ref, node->pin});
        result.append(net != nullptr ? pinOnNet(*node, *net) : pinOfComponent(*node));
    }
    return result;
}

QJsonObject RouteTables::pinOnNet(const EDANetNode &node, const EDANet &net)
{
    QJsonObject members = pinOfComponent(node);
    members.insert(u"net"_s, place(net));
    return members;
}

QJsonObject RouteTables::pinOfComponent(const EDANetNode &node)
{
    return {{u"component"_s, place(node.ref)},
            {u"pin"_s, pin(node.ref, node.pin)},
            {u"text"_s, pinNames.text(node.ref, node.pin)}};
}

QJsonObject RouteTables::pin(const QString &ref, const QString &number) const
{
    const auto part = netlist.getPartByName(netlist.getComponentByRef(ref)->part);
    const auto known = part ? part->getPinByNumber(number) : nullptr;
    return pinToJson(known ? *known : *EDAPin::create(number, {}, {}));
}

// Where boards meet on the net: the pins that are plugged together.
QJsonArray RouteTables::joints(const EDANet &net)
{
    QMap<std::pair<QString, QString>, QStringList> plugs; // by identifier and pin number
    for (const auto &node : std::as_const(net.nodes)) {
        const auto component = netlist.getComponentByRef(node->ref);
        if (component && connectorTypes.contains(component->type(), Qt::CaseInsensitive))
            plugs[{component->identifier(), node->pin}].append(node->ref);
    }
    QJsonArray result;
    for (auto plug = plugs.cbegin(); plug != plugs.cend(); ++plug) {
        if (plug->size() < 2)
            continue;
        QJsonArray places;
        for (const QString &ref : *plug)
            places.append(place(ref));
        result.append(QJsonObject{{u"components"_s, places}, {u"pin"_s, pin(plug->first(), plug.key().second)}});
    }
    return result;
}

void RouteTables::addTo(QJsonObject &members) const
{
    members.insert(u"components"_s, components.rows);
    members.insert(u"nets"_s, nets.rows);
    members.insert(u"crossings"_s, crossings.rows);
    members.insert(u"pins"_s, pins.rows);
}

void addLimits(const Routing &routing, QJsonObject &members)
{
    members.insert(u"limits"_s, QJsonObject{{u"switches"_s, routing.maxSwitchingComponentsPerPath()},
                                            {u"connections"_s, routing.maxAdditionalNodesPerPath()}});
    members.insert(u"excluded"_s,
                   QJsonObject{{u"components"_s, QJsonArray::fromStringList(routing.excludedComponents())},
                               {u"nets"_s, QJsonArray::fromStringList(routing.excludedNets())}});
}
}
