#include <velk/check/SwappedPins.h>

#include <QHash>
#include <QMap>
#include <QSet>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace Velk {

namespace {

/// What lies at each pin of the connectors of a board that have one Identifier.
using Side = QMap<QString, CheckedSystem::Node>;
using NamesOfPins = QMap<QString, QString>;
using Naming = QString (*)(const QString &net);

constexpr int onSeveralNets = -1;

/// As it is drawn; nothing where KiCad made up the name.
QString givenName(const QString &net)
{
    const bool isMadeUp = net.startsWith(u"Net-("_s) || net.startsWith(u"unconnected-("_s);
    return isMadeUp ? QString() : drawnName(net);
}

/// Without the sheets, which are others on another board.
QString nameOnSheet(const QString &net)
{
    return givenName(net).section(u'/', -1);
}

/// The pin at which each name is the only one.
QHash<QString, QString> pinsByName(const NamesOfPins &names)
{
    QHash<QString, QStringList> pins;
    for (auto pin = names.cbegin(); pin != names.cend(); ++pin)
        pins[*pin].append(pin.key());
    QHash<QString, QString> single;
    for (auto name = pins.cbegin(); name != pins.cend(); ++name) {
        if (name->size() == 1)
            single.insert(name.key(), name->first());
    }
    return single;
}

bool areMostlyAlike(const NamesOfPins &names, const NamesOfPins &usual)
{
    int common = 0;
    int alike = 0;
    for (auto pin = names.cbegin(); pin != names.cend(); ++pin) {
        const auto other = usual.constFind(pin.key());
        common += other != usual.cend() ? 1 : 0;
        alike += other != usual.cend() && *other == *pin ? 1 : 0;
    }
    return 2 * alike > common;
}

/// Each list in the order of the pins: the names at these are the usual ones, but each at another pin of the list.
QList<QStringList> exchangedPins(const NamesOfPins &names, const NamesOfPins &usual)
{
    if (!areMostlyAlike(names, usual))
        return {};
    const auto pinOfName = pinsByName(names);
    const auto usualPinOfName = pinsByName(usual);
    QSet<QString> done;
    QList<QStringList> result;
    for (auto first = names.cbegin(); first != names.cend(); ++first) {
        QStringList cycle;
        QString pin = first.key();
        while (!pin.isEmpty() && !done.contains(pin) && pinOfName.contains(names.value(pin))) {
            done.insert(pin);
            cycle.append(pin);
            pin = usualPinOfName.value(names.value(pin));
        }
        if (cycle.size() < 2 || pin != cycle.first())
            continue;
        std::sort(cycle.begin(), cycle.end());
        result.append(cycle);
    }
    return result;
}

class SwappedPins
{
public:
    explicit SwappedPins(const CheckedSystem &checkedSystem)
        : system(checkedSystem)
    {
    }

    QList<SingleFinding> run()
    {
        const auto plugs = collectPlugs();
        for (const auto &sides : plugs) {
            QSet<std::pair<int, QStringList>> known;
            for (const Naming naming : {givenName, nameOnSheet})
                compare(sides, naming, known);
        }
        return findings;
    }

private:
    using Sides = QMap<int, Side>; ///< by netlist

    QMap<QString, Sides> collectPlugs() const;
    NamesOfPins namesOf(const Side &side, Naming naming) const;
    static NamesOfPins usualNames(const QMap<int, NamesOfPins> &names);
    void compare(const Sides &sides, Naming naming, QSet<std::pair<int, QStringList>> &known);
    void add(const Side &first, const Side &second, const QStringList &pins);

    const CheckedSystem &system;
    QList<SingleFinding> findings;
};

QMap<QString, SwappedPins::Sides> SwappedPins::collectPlugs() const
{
    QMap<QString, Sides> plugs; // by Identifier
    for (int i = 0; i < system.componentCount(); ++i) {
        const auto &component = system.component(i);
        if (component.identifier().isEmpty() || !system.types().isConnector(component))
            continue;
        Side &side = plugs[component.identifier()][system.netlistOfComponent(i)];
        for (const auto &node : system.nodesOf(i)) {
            const auto known = side.find(node.pin);
            if (known == side.end())
                side.insert(node.pin, node);
            else if (known->net != node.net)
                known->net = onSeveralNets;
        }
    }
    return plugs;
}

NamesOfPins SwappedPins::namesOf(const Side &side, Naming naming) const
{
    NamesOfPins names;
    for (const auto &node : side) {
        const QString name = node.net == onSeveralNets ? QString() : naming(system.net(node.net).name);
        if (!name.isEmpty())
            names.insert(node.pin, name);
    }
    return names;
}

/// At each pin that several sides name, the name that most of them have, of equally many the first.
NamesOfPins SwappedPins::usualNames(const QMap<int, NamesOfPins> &names)
{
    QMap<QString, QStringList> namesAtPin;
    for (const auto &ofSide : names) {
        for (auto pin = ofSide.cbegin(); pin != ofSide.cend(); ++pin)
            namesAtPin[pin.key()].append(*pin);
    }
    NamesOfPins usual;
    for (auto pin = namesAtPin.cbegin(); pin != namesAtPin.cend(); ++pin) {
        if (pin->size() < 2)
            continue;
        QHash<QString, int> counts;
        for (const QString &name : *pin)
            ++counts[name];
        const auto isRarer = [&](const QString &a, const QString &b) { return counts[a] < counts[b]; };
        usual.insert(pin.key(), *std::max_element(pin->cbegin(), pin->cend(), isRarer));
    }
    return usual;
}

void SwappedPins::compare(const Sides &sides, Naming naming, QSet<std::pair<int, QStringList>> &known)
{
    QMap<int, NamesOfPins> names;
    for (auto side = sides.cbegin(); side != sides.cend(); ++side)
        names.insert(side.key(), namesOf(*side, naming));
    const NamesOfPins usual = usualNames(names);
    for (auto side = names.cbegin(); side != names.cend(); ++side) {
        const auto exchanged = exchangedPins(*side, usual);
        for (const QStringList &pins : exchanged) {
            const auto other = std::find_if(names.cbegin(), names.cend(), [&](const NamesOfPins &ofOther) {
                return std::all_of(pins.cbegin(), pins.cend(),
                                   [&](const QString &pin) { return ofOther.value(pin) == usual.value(pin); });
            });
            if (other == names.cend() || known.contains({side.key(), pins}))
                continue;
            known.insert({side.key(), pins});
            const auto [first, second] = std::minmax(side.key(), other.key());
            add(sides[first], sides[second], pins);
        }
    }
}

void SwappedPins::add(const Side &first, const Side &second, const QStringList &pins)
{
    QStringList refs;
    QStringList nets;
    QStringList names[2];
    for (const Side *side : {&first, &second}) {
        for (const QString &pin : pins) {
            const auto &node = side->value(pin);
            refs.append(system.component(node.component).ref);
            nets.append(system.net(node.net).name);
            names[side == &second].append(givenName(nets.last()));
        }
    }
    refs.removeDuplicates();
    findings.append({FindingCode::ConnectorPinsSwapped, refs,
                     u"%1 seem to be exchanged, with %2 on the one side and %3 on the other"_s.arg(
                         listedPins(pins), listedInQuotes(names[0]), listedInQuotes(names[1])),
                     refs, nets, pins});
}
}

QList<SingleFinding> swappedPinFindings(const CheckedSystem &system)
{
    return SwappedPins(system).run();
}
}
