#include "cli/check/NetChecks.h"

#include <QMap>

#include <algorithm>
#include <utility>
#include <vector>

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

/// KiCad marks them by a property without a value.
QList<Finding> unpopulated(const CheckedSystem &system)
{
    const QString mark = u"dnp"_s;
    QStringList refs;
    for (const auto &component : system.allComponents()) {
        const bool isMarked = component->properties.contains(mark) && component->property(mark).isEmpty();
        if (isMarked && (system.types().isSwitchable(*component) || system.types().isConnector(*component)))
            refs.append(component->ref);
    }
    if (refs.isEmpty())
        return {};
    return {{FindingCode::NotPopulated, listed(refs) + u": marked as not populated, but taken as if it were"_s, refs}};
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

/// One finding for all switchable components of a part with the same such pins: all relays may lack their coils.
template <typename PinsOf>
QList<Finding> pinFindings(const CheckedSystem &system, FindingCode code, const QString &text, PinsOf pinsOf)
{
    QMap<std::pair<QString, QStringList>, QStringList> refs;
    for (int i = 0; i < system.componentCount(); ++i) {
        const auto &component = system.component(i);
        if (!system.types().isSwitchable(component))
            continue;
        const QStringList pins = pinsOf(i);
        if (!pins.isEmpty())
            refs[{component.part, pins}].append(component.ref);
    }
    QList<Finding> findings;
    for (auto it = refs.cbegin(); it != refs.cend(); ++it)
        findings.append({code, text.arg(listed(it.value()), listedPins(it.key().second)), it.value()});
    return findings;
}

QList<Finding> unconnectedPins(const CheckedSystem &system)
{
    return pinFindings(system, FindingCode::PinOnNoNet, u"%1: no net at %2"_s, [&](int component) {
        return pinsOnNoNet(system, component, *system.netlists().getPartByName(system.component(component).part));
    });
}

QList<Finding> lonelyPins(const CheckedSystem &system)
{
    std::vector<qsizetype> nodeCounts(static_cast<std::size_t>(system.netCount())); // of the joined nets
    const auto nodeCount = [&](int net) -> qsizetype & {
        return nodeCounts[static_cast<std::size_t>(system.joinedNet(net))];
    };
    for (int i = 0; i < system.netCount(); ++i)
        nodeCount(i) += system.net(i).nodes.size();
    return pinFindings(system, FindingCode::PinAloneOnNet, u"%1: nothing else on the net at %2"_s, [&](int component) {
        QStringList pins;
        for (const auto &node : system.nodesOf(component)) {
            if (nodeCount(node.net) == 1)
                pins.append(node.pin);
        }
        return pins;
    });
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
    return componentsWithoutType(system) + unpopulated(system) + unconnectedPins(system) + nodesOnTwoNets(system) +
           lonelyPins(system);
}
}
