#include <velk/check/NetChecks.h>

#include <QHash>
#include <QMap>
#include <QSet>

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

/// KiCad marks them by a property without a value.
QList<SingleFinding> unpopulated(const CheckedSystem &system)
{
    const QString mark = u"dnp"_s;
    QStringList refs;
    for (const auto &component : system.allComponents()) {
        const bool isMarked = component->properties.contains(mark) && component->property(mark).isEmpty();
        if (isMarked && (system.types().isSwitchable(*component) || system.types().isConnector(*component)))
            refs.append(component->ref);
    }
    return findingsOfEach(FindingCode::NotPopulated, refs, u"marked as not populated, but taken as if it were"_s, 1);
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

QStringList netsAt(const CheckedSystem &system, int component, const QSet<QString> &pins)
{
    QStringList nets;
    for (const auto &node : system.nodesOf(component)) {
        if (pins.contains(node.pin))
            nets.append(system.net(node.net).name);
    }
    return nets;
}

/// One group for all switchable components of a part with the same such pins: all relays may lack their coils.
template <typename PinsOf>
QList<SingleFinding> pinFindings(const CheckedSystem &system, FindingCode code, const QString &text, PinsOf pinsOf)
{
    QMap<std::pair<QString, QStringList>, QList<int>> components;
    for (int i = 0; i < system.componentCount(); ++i) {
        const auto &component = system.component(i);
        if (!system.types().isSwitchable(component))
            continue;
        const QStringList pins = pinsOf(i);
        if (!pins.isEmpty())
            components[{component.part, pins}].append(i);
    }
    QList<SingleFinding> findings;
    int group = 0;
    for (auto it = components.cbegin(); it != components.cend(); ++it) {
        const QStringList &pins = it.key().second;
        auto ofEach = findingsOfEach(code, system.refsOf(it.value()), text + listedPins(pins), ++group);
        const QSet<QString> pinSet(pins.cbegin(), pins.cend());
        for (qsizetype i = 0; i < ofEach.size(); ++i) {
            ofEach[i].nets = netsAt(system, it.value().at(i), pinSet);
            ofEach[i].pins = pins;
        }
        findings += ofEach;
    }
    return findings;
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

/// How KiCad calls the net of a pin at which nothing is drawn but perhaps a cross.
bool isOfUnwiredPin(const EDANet &net)
{
    return net.name.startsWith(u"unconnected-("_s);
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

bool looksLikeCoil(const EDAPin &pin)
{
    return pin.number.contains(u"coil"_s, Qt::CaseInsensitive) || pin.name.contains(u"coil"_s, Qt::CaseInsensitive);
}

/// The numbers of those pins that are called so, or A1 and A2, as coils are by IEC.
QSet<QString> coilPins(const EDAPart &part)
{
    QSet<QString> coil;
    QHash<QString, QString> numbers;
    for (const auto &pin : part.pins) {
        if (looksLikeCoil(*pin))
            coil.insert(pin->number);
        numbers.insert(pin->name.toUpper(), pin->number);
    }
    for (const auto &pin : part.pins)
        numbers.insert(pin->number.toUpper(), pin->number);
    if (numbers.contains(u"A1"_s) && numbers.contains(u"A2"_s))
        coil << numbers.value(u"A1"_s) << numbers.value(u"A2"_s);
    return coil;
}

/// What a route crosses although no relay connects it.
QList<SingleFinding> polesAndCoils(const CheckedSystem &system)
{
    QHash<QString, QSet<QString>> coils; // by part
    const auto parts = system.netlists().getParts();
    for (const auto &part : parts)
        coils.insert(part->name, coilPins(*part));
    const auto wiredPins = [&](int component, bool isOfCoil) {
        const auto coil = coils.value(system.component(component).part);
        QMap<QString, int> nets;
        for (const auto &node : system.nodesOf(component)) {
            if (coil.contains(node.pin) == isOfCoil && !isOfUnwiredPin(system.net(node.net)))
                nets.insert(node.pin, system.joinedNet(node.net));
        }
        return nets;
    };
    const auto pinsOfCoil = [&](int component) { return QStringList(wiredPins(component, true).keys()); };
    const auto pinsOfPoles = [&](int component) {
        constexpr qsizetype mostOfAPole = 3; // of a changeover contact
        const auto nets = wiredPins(component, false);
        const QSet<int> distinct(nets.cbegin(), nets.cend());
        return distinct.size() > mostOfAPole ? QStringList(nets.keys()) : QStringList();
    };
    return pinFindings(system, FindingCode::PolesOrCoil, u"routes may cross to a coil, as it seems, at "_s,
                       pinsOfCoil) +
           pinFindings(system, FindingCode::PolesOrCoil, u"routes may cross between any two of its "_s, pinsOfPoles);
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
           polesAndCoils(system) + lonelyPins(system);
}
}
