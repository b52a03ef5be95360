#include "cli/check/NetChecks.h"

#include <QMap>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

/// One finding for all components of a part: a board has many capacitors. What lies on no net, as a mounting hole,
/// needs no type.
QList<Finding> componentsWithoutType(const CheckedSystem &system)
{
    QMap<QString, QStringList> refsByPart;
    for (int i = 0; i < system.componentCount(); ++i) {
        const auto nodes = system.nodesOf(i);
        if (system.component(i).type().isEmpty() && nodes.begin() != nodes.end())
            refsByPart[system.component(i).part].append(system.component(i).ref);
    }
    QList<Finding> findings;
    for (auto it = refsByPart.cbegin(); it != refsByPart.cend(); ++it)
        findings.append(
            {FindingCode::NoType, u"%1: no CompType (part '%2')"_s.arg(listed(it.value()), it.key()), it.value()});
    return findings;
}

/// In the order of the part.
QStringList pinsOnNoNet(const CheckedSystem &system, int component, const EDAPart &part)
{
    QStringList pins;
    const auto nodes = system.nodesOf(component);
    const auto isBefore = [](const CheckedSystem::Node &node, const QString &number) { return node.pin < number; };
    for (const auto &pin : part.pins) {
        const auto *node = std::lower_bound(nodes.begin(), nodes.end(), pin->number, isBefore);
        if (node == nodes.end() || node->pin != pin->number)
            pins.append(pin->number);
    }
    pins.removeDuplicates();
    return pins;
}

/// One finding for all components of a part with the same pins: all relays may lack their coils.
QList<Finding> unconnectedPins(const CheckedSystem &system)
{
    QMap<std::pair<QString, QStringList>, QStringList> refs;
    for (int i = 0; i < system.componentCount(); ++i) {
        const auto &component = system.component(i);
        if (!system.types().isSwitchable(component))
            continue;
        const QStringList pins = pinsOnNoNet(system, i, *system.netlists().getPartByName(component.part));
        if (!pins.isEmpty())
            refs[{component.part, pins}].append(component.ref);
    }
    QList<Finding> findings;
    for (auto it = refs.cbegin(); it != refs.cend(); ++it)
        findings.append({FindingCode::PinOnNoNet,
                         u"%1: no net at %2"_s.arg(listed(it.value()), listedPins(it.key().second)), it.value()});
    return findings;
}

QList<Finding> nodesOnTwoNets(const CheckedSystem &system)
{
    QList<Finding> findings;
    for (int i = 0; i < system.componentCount(); ++i) {
        QStringList pins;
        QStringList nets;
        const CheckedSystem::Node *last = nullptr;
        for (const auto &node : system.nodesOf(i)) {
            if (last && node.pin == last->pin && node.net != last->net) {
                pins.append(node.pin);
                nets << system.net(last->net).name << system.net(node.net).name;
            }
            last = &node;
        }
        pins.removeDuplicates();
        nets.removeDuplicates();
        if (pins.isEmpty())
            continue;
        const auto &component = system.component(i);
        const QString effect = system.types().isConnector(component) ? u" and are joined there"_s : QString();
        findings.append(
            {FindingCode::NodeOnTwoNets,
             u"%1: several nets hold its %2%3: %4"_s.arg(component.ref, listedPins(pins), effect, listed(nets)),
             {component.ref},
             nets});
    }
    return findings;
}
}

QList<Finding> netFindings(const CheckedSystem &system)
{
    return componentsWithoutType(system) + unconnectedPins(system) + nodesOnTwoNets(system);
}
}
