#include "tests/support/RandomRelays.h"
#include "tests/support/TestRegistry.h"

#include <velk/switching/Connectivity.h>
#include <velk/switching/ExpectedConnections.h>
#include <velk/switching/StateConnections.h>

#include <QMap>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace {

QString nameOf(const InterfacePin &pin)
{
    return pin.ref + u'/' + pin.number;
}

int netOf(const SwitchingModel &model, const QString &name)
{
    return model.netOf(name.section(u'/', 0, 0), name.section(u'/', 1));
}

QString toText(const QList<InterfacePin> &pins)
{
    QStringList names;
    for (const InterfacePin &pin : pins)
        names.append(nameOf(pin));
    return names.join(u' ');
}

QStringList toTexts(const QList<QList<InterfacePin>> &sets)
{
    QStringList texts;
    for (const auto &pins : sets)
        texts.append(toText(pins));
    return texts;
}

/// The names with the same number, in the order of their first names.
template <typename NumberOf>
QStringList sets(const QStringList &names, NumberOf numberOf)
{
    QStringList result;
    QMap<int, qsizetype> places;
    for (const QString &name : names) {
        const int number = numberOf(name);
        if (!places.contains(number)) {
            places.insert(number, result.size());
            result.append(name);
        } else {
            result[places.value(number)] += u' ' + name;
        }
    }
    return result;
}

QStringList sets(const QStringList &names, PlainUnion &tied)
{
    return sets(names, [&](const QString &name) { return tied.number(name); });
}

QStringList interfacePinsOf(const SwitchingModel &model)
{
    QStringList names;
    for (const InterfacePin &pin : model.interfacePins())
        names.append(nameOf(pin));
    return names;
}

void coupleBy(const PassiveComponent &passive, const StubProvider &netlist, PlainUnion &tied)
{
    const auto part = netlist.getPartByName(u'P' + passive.ref);
    for (const auto &pin : part->pins)
        tied.unite(passive.ref + u'/' + pin->number, passive.ref + u"/1"_s);
}

/// The same as StateConnections tells.
QStringList connectionsBy(PlainUnion tied, PlainUnion alone, const SwitchingModel &model, const StubProvider &netlist)
{
    QStringList lines;
    const QStringList connected = sets(interfacePinsOf(model), tied);
    for (const QString &set : connected) {
        if (sets(set.split(u' '), alone).size() > 1)
            lines.append(u"connected "_s + set);
    }
    for (const PassiveComponent &passive : model.passives())
        coupleBy(passive, netlist, tied);
    QMap<int, QStringList> setsOf;
    for (const QString &set : connected)
        setsOf[tied.number(set.section(u' ', 0, 0))].append(set);
    for (const QString &set : connected) {
        const int number = tied.number(set.section(u' ', 0, 0));
        const QStringList coupled = setsOf.take(number); // told at its first set
        QString line = u"coupled "_s + coupled.join(u" | "_s) + u" by"_s;
        for (const PassiveComponent &passive : model.passives()) {
            if (tied.number(passive.ref + u"/1"_s) == number)
                line += u' ' + passive.ref;
        }
        if (coupled.size() > 1)
            lines.append(line);
    }
    return lines;
}

QStringList connectionsBy(const Connectivity &state)
{
    const StateConnections found = connectionsIn(state);
    QStringList lines;
    for (const auto &set : found.connected)
        lines.append(u"connected "_s + toText(set));
    for (const PinCoupling &coupling : found.couplings) {
        const QString by = coupling.passives.isEmpty() ? QString() : u' ' + coupling.passives.join(u' ');
        lines.append(u"coupled "_s + toTexts(coupling.sets).join(u" | "_s) + u" by"_s + by);
    }
    return lines;
}

/// "3: 3 7" for each net: the number of its set, and the nets of the set that has the number of the net.
QStringList setsOf(const Connectivity &state)
{
    QStringList texts;
    for (int net = 0; net < state.model().netCount(); ++net) {
        texts.append(QString::number(state.setOf(net)) + u':');
        for (const int other : state.netsOf(net))
            texts.last() += u' ' + QString::number(other);
    }
    return texts;
}

QList<ExpectedConnection> randomConnections(const SwitchingModel &model, const QStringList &pins,
                                            QRandomGenerator &random)
{
    const auto randomPin = [&] {
        const QString name = pins.at(random.bounded(pins.size()));
        return InterfacePin{name.section(u'/', 0, 0), name.section(u'/', 1), netOf(model, name)};
    };
    QList<ExpectedConnection> connections;
    for (int i = random.bounded(5); i > 0; --i)
        connections.append({randomPin(), randomPin()});
    return connections;
}

/// The sets of short circuits, by what is tied together, what is alone, and what is connected at rest.
QStringList shortsBy(PlainUnion &tied, PlainUnion alone, PlainUnion &rest, const SwitchingModel &model,
                     const QList<ExpectedConnection> &expected)
{
    QStringList asked;
    PlainUnion groups = alone;
    for (const auto &[from, to] : expected) {
        groups.unite(nameOf(from), nameOf(to));
        asked += {nameOf(from), nameOf(to)};
    }
    asked.removeDuplicates();
    asked.sort();
    QStringList others = interfacePinsOf(model);
    others.removeIf([&](const QString &pin) {
        return std::any_of(asked.cbegin(), asked.cend(),
                           [&](const QString &known) { return alone.number(known) == alone.number(pin); });
    });
    QMap<int, QStringList> parts; // that are apart, by what ties them together
    for (const QString &set : sets(asked, groups)) {
        for (const QString &part : sets(set.split(u' '), tied))
            parts[tied.number(part.section(u' ', 0, 0))].append(part);
    }
    for (const QString &set : sets(others, rest)) {
        for (const QString &part : sets(set.split(u' '), tied))
            parts[tied.number(part.section(u' ', 0, 0))].append(part);
    }
    QStringList shorts;
    for (QStringList &pieces : parts) {
        pieces.sort();
        if (pieces.size() > 1)
            shorts.append(pieces.join(u" | "_s));
    }
    shorts.sort();
    return shorts;
}
}

class ConnectivityTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void equalsAPlainUnion()
    {
        qsizetype told = 0;
        for (quint32 seed = 0; seed < 3000; ++seed) {
            QRandomGenerator random(seed);
            RandomRelays system(random);
            const SwitchingModel model(system.netlist);
            Connectivity state(model);
            for (int step = 0; step < 5; ++step) {
                const QByteArray where = u"seed %1, step %2"_s.arg(seed).arg(step).toUtf8();
                auto tied = system.tiedBy(model, state.positions());
                const auto setOf = [&](const QString &pin) { return state.setOf(netOf(model, pin)); };
                QCOMPARE(sets(system.pins, setOf), sets(system.pins, tied));
                const QStringList lines = connectionsBy(state);
                const QStringList expected = connectionsBy(tied, system.tiedByNets(), model, system.netlist);
                QVERIFY2(lines == expected, where + '\n' + lines.join(u'\n').toUtf8());
                const auto coupled = state.coupledSets();
                QVERIFY(
                    std::is_sorted(coupled.cbegin(), coupled.cend(), [](const CoupledSets &a, const CoupledSets &b) {
                        return a.sets.front() < b.sets.front();
                    }));
                told += lines.size();
                const auto positions = system.randomPositions(model);
                if (step % 2 == 0)
                    state.setPositions(positions);
                else if (model.gangCount() > 0)
                    state.setPosition(model.gangCount() - 1, positions.back());
            }
        }
        QVERIFY(told > 10'000);
    }

    void changesEqualAnewBeginning()
    {
        for (quint32 seed = 0; seed < 1000; ++seed) {
            QRandomGenerator random(seed);
            RandomRelays system(random);
            const SwitchingModel model(system.netlist);
            Connectivity changed(model);
            for (int step = 0; step < 20 && model.gangCount() > 0; ++step) {
                const Connectivity before = changed;
                const QStringList setsBefore = setsOf(before);
                const int gang = random.bounded(model.gangCount());
                const int position = random.bounded(model.gang(gang).positionCount);
                changed.setPosition(gang, position);
                QCOMPARE(changed.position(gang), position);
                Connectivity anew(model);
                anew.setPositions(changed.positions());
                QCOMPARE(setsOf(changed), setsOf(anew));
                QCOMPARE(setsOf(before), setsBefore); // copies are on their own
            }
        }
    }

    void comparisonEqualsTheRules()
    {
        qsizetype shorts = 0;
        qsizetype missing = 0;
        qsizetype through = 0;
        for (quint32 seed = 0; seed < 3000; ++seed) {
            QRandomGenerator random(seed);
            RandomRelays system(random);
            const SwitchingModel model(system.netlist);
            const Connectivity atRest(model);
            Connectivity state(model);
            state.setPositions(system.randomPositions(model));
            const auto expected = randomConnections(model, system.pins, random);
            const auto found = compareConnections(state, atRest, expected);

            auto tied = system.tiedBy(model, state.positions());
            auto coupled = tied;
            for (const PassiveComponent &passive : model.passives())
                coupleBy(passive, system.netlist, coupled);
            QList<int> isMissing;
            QList<int> leadsThrough;
            for (int i = 0; i < expected.size(); ++i) {
                const auto [from, to] = std::pair(nameOf(expected.at(i).from), nameOf(expected.at(i).to));
                if (coupled.number(from) != coupled.number(to))
                    isMissing.append(i);
                else if (tied.number(from) != tied.number(to))
                    leadsThrough.append(i);
            }
            QCOMPARE(found.missing, isMissing);
            QList<int> isThrough;
            for (const auto &[connection, passives] : found.through) {
                isThrough.append(connection);
                auto led = system.tiedBy(model, state.positions());
                for (const PassiveComponent &passive : model.passives()) {
                    if (!passives.contains(passive.ref))
                        continue;
                    coupleBy(passive, system.netlist, tied);
                    coupleBy(passive, system.netlist, led);
                }
                const auto &[from, to] = expected.at(connection);
                QCOMPARE(led.number(nameOf(from)), led.number(nameOf(to)));
            }
            QCOMPARE(isThrough, leadsThrough);

            auto rest = system.tiedBy(model, atRest.positions());
            QStringList foundShorts;
            for (const ShortCircuit &circuit : found.shorts)
                foundShorts.append(toTexts(circuit.sets).join(u" | "_s));
            QCOMPARE(foundShorts, shortsBy(tied, system.tiedByNets(), rest, model, expected));
            shorts += found.shorts.size();
            missing += found.missing.size();
            through += found.through.size();
        }
        QVERIFY(shorts > 1000 && missing > 1000 && through > 100);
    }
};

VELK_TEST(ConnectivityTest)

#include "ConnectivityTest.moc"
