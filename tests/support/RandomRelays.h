#ifndef VELK_TESTS_RANDOMRELAYS_H
#define VELK_TESTS_RANDOMRELAYS_H

#include "tests/support/StubProvider.h"

#include <velk/switching/SwitchingModel.h>

#include <QHash>
#include <QRandomGenerator>

#include <utility>

/// What is tied together, by names, the plainest way.
class PlainUnion
{
public:
    void unite(const QString &a, const QString &b)
    {
        const int from = number(a);
        const int to = number(b);
        for (int &known : numbers) {
            if (known == from)
                known = to;
        }
    }
    int number(const QString &name)
    {
        if (!numbers.contains(name))
            numbers.insert(name, static_cast<int>(numbers.size()));
        return numbers.value(name);
    }

private:
    QHash<QString, int> numbers;
};

/// A few nets with relays of all kinds, resistors, instruments and a device between them: relays with two to four
/// positions, some in gangs, with pins on no net or on two, of unknown positions, not populated.
struct RandomRelays
{
    struct Relay
    {
        QList<QList<std::pair<QString, QString>>> positions; ///< pairs of "REF/PIN"
        QString gang;
    };

    explicit RandomRelays(QRandomGenerator &generator)
        : random(generator)
    {
        using namespace Qt::StringLiterals;
        const int netCount = random.bounded(2, 9);
        for (int i = 0; i < netCount; ++i)
            netlist.connect(u"N%1"_s.arg(i), {});
        for (int i = random.bounded(9); i > 0; --i)
            addRelay(u"K%1"_s.arg(i));
        for (int i = random.bounded(4); i > 0; --i)
            add(u"R%1"_s.arg(i), u"Resistor"_s, random.bounded(2, 4));
        for (int i = random.bounded(2, 5); i > 0; --i)
            add(u"U%1"_s.arg(i), u"Source"_s, random.bounded(1, 4));
        add(u"J1"_s, u"DUT"_s, random.bounded(1, 4));
    }

    /// A position for each gang of the model.
    std::vector<int> randomPositions(const Velk::SwitchingModel &model)
    {
        std::vector<int> positions;
        positions.reserve(static_cast<std::size_t>(model.gangCount()));
        for (int gang = 0; gang < model.gangCount(); ++gang)
            positions.push_back(random.bounded(model.gang(gang).positionCount));
        return positions;
    }

    /// What nets tie together: their names and those of pins, as "REF/PIN".
    PlainUnion tiedByNets() const
    {
        PlainUnion tied;
        for (const auto &net : netlist.nets) {
            for (const auto &node : std::as_const(net->nodes))
                tied.unite(net->name, node->ref + u'/' + node->pin);
        }
        return tied;
    }

    /// What nets and contacts in these positions tie together.
    PlainUnion tiedBy(const Velk::SwitchingModel &model, const std::vector<int> &positions) const
    {
        PlainUnion tied = tiedByNets();
        for (auto relay = relays.cbegin(); relay != relays.cend(); ++relay) {
            const int gang = model.gangOf(model.componentOf(relay.key()));
            for (const auto &[a, b] : relay->positions.at(positions[static_cast<std::size_t>(gang)]))
                tied.unite(a, b);
        }
        return tied;
    }

    /// All pins of the components that are there, as "REF/PIN".
    QStringList pins;
    QHash<QString, Relay> relays; ///< with known positions, by reference
    StubProvider netlist;

private:
    void add(const QString &ref, const QString &type, int pinCount)
    {
        using namespace Qt::StringLiterals;
        QStringList numbers;
        for (int i = 1; i <= pinCount; ++i)
            numbers.append(QString::number(i));
        const auto component = netlist.add(ref, type, numbers);
        if (random.bounded(12) == 0)
            component->properties.insert(u"dnp"_s, QString());
        for (const QString &number : std::as_const(numbers)) {
            const bool isRelay = type == u"Relay"_s;
            for (int nets = random.bounded(10) == 0 ? random.bounded(isRelay ? 0 : 1, 3) : 1; nets > 0; --nets)
                netlist.nets.at(random.bounded(netlist.nets.size()))->addNode(ref, number);
            pins.append(ref + u'/' + number);
        }
    }

    void addRelay(const QString &ref)
    {
        using namespace Qt::StringLiterals;
        const int pinCount = random.bounded(3, 6);
        add(ref, u"Relay"_s, pinCount);
        auto &properties = netlist.components.last()->properties;
        if (random.bounded(8) == 0)
            return; // its positions are unknown
        Relay relay;
        QStringList texts;
        if (random.bounded(3) == 0)
            relay.gang = u"G%1"_s.arg(random.bounded(2));
        // All relays of a gang have as many positions.
        for (int i = relay.gang.isEmpty() ? random.bounded(2, 5) : 3; i > 0; --i) {
            relay.positions.append(QList<std::pair<QString, QString>>());
            QStringList pairs;
            for (int pair = random.bounded(3); pair > 0; --pair) {
                const int a = random.bounded(pinCount) + 1;
                const int b = (a - 1 + random.bounded(1, pinCount)) % pinCount + 1;
                pairs.append(u"%1-%2"_s.arg(a).arg(b));
                relay.positions.last().append({u"%1/%2"_s.arg(ref).arg(a), u"%1/%2"_s.arg(ref).arg(b)});
            }
            texts.append(pairs.join(u' '));
        }
        properties.insert(u"Positions"_s, texts.join(u'/'));
        if (!relay.gang.isEmpty())
            properties.insert(u"Gang"_s, relay.gang);
        if (!properties.contains(u"dnp"_s))
            relays.insert(ref, relay);
    }

    QRandomGenerator &random;
};

#endif
