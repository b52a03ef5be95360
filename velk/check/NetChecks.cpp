#include <velk/check/NetChecks.h>

#include <velk/check/PinFindings.h>

#include <QMap>

#include <algorithm>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace Velk {

namespace {

/// One finding for all components of a part: a board has many capacitors. What lies on no net, as a mounting hole,
/// needs no type.
QList<SingleFinding> componentsWithoutType(const CheckedSystem &system)
{
    QMap<QString, QStringList> refsByPart;
    for (int i = 0; i < system.componentCount(); ++i) {
        const auto nodes = system.nodesOf(i);
        if (system.component(i).type().isEmpty() && nodes.begin() != nodes.end())
            refsByPart[system.component(i).part].append(system.component(i).ref);
    }
    QList<SingleFinding> findings;
    int group = 0;
    for (auto it = refsByPart.cbegin(); it != refsByPart.cend(); ++it)
        findings +=
            findingsOfEach(FindingCode::NoType, it.value(), u"no CompType (part '%1')"_s.arg(it.key()), ++group);
    return findings;
}

/// KiCad marks them by a property, from which routes cannot tell an own field of that name.
QList<SingleFinding> unpopulated(const CheckedSystem &system)
{
    QStringList connectors;
    QStringList switchables;
    for (const auto &component : system.allComponents()) {
        if (!component->properties.contains(u"dnp"_s))
            continue;
        if (system.types().isConnector(*component))
            connectors.append(component->ref);
        else if (system.types().isSwitchable(*component))
            switchables.append(component->ref);
    }
    return findingsOfEach(FindingCode::NotPopulated, connectors, u"marked as not populated, but joined all the same"_s,
                          1) +
           findingsOfEach(FindingCode::NotPopulated, switchables,
                          u"marked as not populated, and left out of all but ways as drawn"_s, 2);
}

/// In the order of the part, if that is known. The pins that lie on nets are sorted.
QStringList pinsOnNoNet(const QSharedPointer<EDAPart> &part, const QStringList &pinsOnNets)
{
    if (!part)
        return {};
    QStringList pins;
    for (const auto &pin : std::as_const(part->pins)) {
        if (!std::binary_search(pinsOnNets.cbegin(), pinsOnNets.cend(), pin->number))
            pins.append(pin->number);
    }
    pins.removeDuplicates();
    return pins;
}

QList<SingleFinding> unconnectedPins(const CheckedSystem &system)
{
    QMap<std::pair<QString, QStringList>, QStringList> known; // thousands of components may have a part of many pins
    return pinFindings(system, FindingCode::PinOnNoNet, u"no net at "_s, [&](int component) {
        const QString &part = system.component(component).part;
        QStringList pinsOnNets;
        for (const auto &node : system.nodesOf(component))
            pinsOnNets.append(node.pin);
        const auto found = known.constFind({part, pinsOnNets});
        if (found != known.cend())
            return *found;
        return *known.insert({part, pinsOnNets}, pinsOnNoNet(system.netlists().getPartByName(part), pinsOnNets));
    });
}

QList<SingleFinding> lonelyPins(const CheckedSystem &system)
{
    std::vector<qsizetype> nodeCounts(static_cast<std::size_t>(system.netCount())); // of the joined nets
    const auto nodeCount = [&](int net) -> qsizetype & {
        return nodeCounts[static_cast<std::size_t>(system.joinedNet(net))];
    };
    for (int i = 0; i < system.netCount(); ++i)
        nodeCount(i) += system.net(i).nodes.size();
    const auto findLonely = [&](FindingCode code, const QString &text, bool isUnwired) {
        return pinFindings(system, code, text, [&](int component) {
            QStringList pins;
            for (const auto &node : system.nodesOf(component)) {
                if (nodeCount(node.net) == 1 && isOfUnwiredPin(system.net(node.net)) == isUnwired)
                    pins.append(node.pin);
            }
            return pins;
        });
    };
    return findLonely(FindingCode::PinAloneOnNet, u"nothing else on the net at "_s, false) +
           findLonely(FindingCode::PinNotWired, u"nothing is drawn at "_s, true);
}

QList<SingleFinding> nodesOnTwoNets(const CheckedSystem &system)
{
    QList<SingleFinding> findings;
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
        findings.append({FindingCode::NodeOnTwoNets,
                         {component.ref},
                         u"several nets hold its %1%2: %3"_s.arg(listedPins(pins), effect, listed(nets)),
                         {component.ref},
                         nets,
                         pins});
    }
    return findings;
}
}

QList<SingleFinding> netFindings(const CheckedSystem &system)
{
    return componentsWithoutType(system) + unpopulated(system) + unconnectedPins(system) + nodesOnTwoNets(system) +
           lonelyPins(system);
}
}
