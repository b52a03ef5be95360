#ifndef VELK_TESTS_RANDOMSYSTEMS_H
#define VELK_TESTS_RANDOMSYSTEMS_H

#include "tests/support/StubProvider.h"

#include <QRandomGenerator>

#include <algorithm>
#include <memory>
#include <vector>

/// Lines "REF TYPE PIN,PIN" or "REF TYPE PIN,PIN IDENTIFIER", and "NET: NODE NODE". Each component has its reference as
/// the property "Id".
inline std::unique_ptr<StubProvider> systemOf(const QString &description)
{
    using namespace Qt::StringLiterals;
    auto system = std::make_unique<StubProvider>();
    for (const QString &line : description.split(u'\n')) {
        const QStringList words = line.split(u' ', Qt::SkipEmptyParts);
        if (words.at(0).endsWith(u':'))
            system->connect(words.at(0).chopped(1), words.mid(1));
        else
            system->add(words.at(0), words.at(1), words.at(2).split(u','), words.value(3))
                ->properties.insert(u"Id"_s, words.at(0));
    }
    return system;
}

/// Boards, which "--" separates.
inline std::vector<std::unique_ptr<StubProvider>> systemsOf(const QString &descriptions)
{
    std::vector<std::unique_ptr<StubProvider>> systems;
    for (const QString &description : descriptions.split(QStringLiteral("\n--\n")))
        systems.push_back(systemOf(description));
    return systems;
}

/// Few nets, so that there are loops, parallel relays, nets that hold a node twice and nodes on two nets.
inline std::unique_ptr<StubProvider> randomSystem(QRandomGenerator &random)
{
    using namespace Qt::StringLiterals;
    auto system = systemOf(u"U1 Source 1\nD1 DUT 1"_s);
    const int nets = random.bounded(2, 6);
    QList<QStringList> nodes(nets);
    const auto place = [&](const QString &node) { nodes[random.bounded(nets)].append(node); };
    for (const QString &end : {u"U1/1"_s, u"D1/1"_s}) {
        for (int copies = random.bounded(8) == 0 ? 2 : 1; copies > 0; --copies)
            place(end);
    }
    for (int i = random.bounded(1, 7); i > 0; --i) {
        const QString ref = u"K%1"_s.arg(i);
        const QStringList pins =
            QStringList{u"1"_s, u"a"_s, u"A"_s, u"b"_s}.mid(0, random.bounded(4) == 0 ? random.bounded(3, 5) : 2);
        const QStringList others = random.bounded(4) == 0 ? u"2 3 4 5 6 7 8"_s.split(u' ') : QStringList(); // on no net
        system->add(ref, random.bounded(6) == 0 ? u"Fuse"_s : u"relay"_s, pins + others);
        for (const QString &pin : pins) {
            for (int copies = random.bounded(12) == 0 ? random.bounded(3) : 1; copies > 0; --copies)
                place(ref + u'/' + pin);
        }
    }
    for (int i = random.bounded(0, 5); i > 0; --i) {
        system->add(u"J%1"_s.arg(i), random.bounded(2) == 0 ? u"Dut"_s : u"SOURCE"_s, {u"1"_s});
        place(u"J%1/1"_s.arg(i));
    }
    for (int net = 0; net < nets; ++net) {
        if (random.bounded(8) == 0)
            nodes[net].append(u"Z1/1"_s); // listed nowhere
        std::shuffle(nodes[net].begin(), nodes[net].end(), random);
        system->connect(u"N%1"_s.arg(net), nodes.at(net));
    }
    return system;
}

/// Adds parallel relays, and interfaces at which many of the branches over them end. On some systems also nets, so that
/// there are longer ways.
inline void crowd(StubProvider &system, QRandomGenerator &random)
{
    using namespace Qt::StringLiterals;
    for (int i = random.bounded(2) * 6; i > 0; --i)
        system.connect(u"M%1"_s.arg(i), {});
    const auto place = [&](const QString &ref, const QString &pin) {
        system.nets.at(random.bounded(system.nets.size()))->addNode(ref, pin);
    };
    for (int i = 0; i < 10; ++i) {
        const QString relay = u"L%1"_s.arg(i);
        system.add(relay, u"Relay"_s, i % 3 == 0 ? u"1 2 3 4 5 6 7 8 9"_s.split(u' ') : QStringList{u"1"_s, u"2"_s});
        place(relay, u"1"_s);
        place(relay, u"2"_s);
    }
    for (const QString &source : {u"S1"_s, u"S2"_s, u"S3"_s}) {
        system.add(source, u"Source"_s, {u"1"_s});
        place(source, u"1"_s);
    }
}

/// Two random boards with two connectors, where some part is unknown and some node is on a pin that its part lacks. The
/// DUT of the second one has the property "Side".
inline std::vector<std::unique_ptr<StubProvider>> randomBoards(QRandomGenerator &random)
{
    using namespace Qt::StringLiterals;
    std::vector<std::unique_ptr<StubProvider>> boards;
    for (int i = 0; i < 2; ++i) {
        boards.push_back(randomSystem(random));
        StubProvider &board = *boards.back();
        if (random.bounded(3) == 0)
            crowd(board, random);
        for (const QString &ref : {u"X1"_s, u"X2"_s}) {
            board.add(ref, QStringList{u"Relay"_s, u"Connector"_s, u"CONNECTOR"_s}.at(random.bounded(3)),
                      {u"1"_s, u"2"_s}, ref);
            for (const QString &pin : {u"1"_s, u"2"_s})
                board.nets.at(random.bounded(board.nets.size()))->addNode(ref, pin);
        }
        if (random.bounded(3) == 0)
            board.nets.at(random.bounded(board.nets.size()))->addNode(u"K1"_s, u"9"_s);
        if (random.bounded(4) == 0)
            board.parts.removeAt(random.bounded(2, static_cast<int>(board.parts.size())));
    }
    boards[1]->getComponentByRef(u"D1"_s)->properties.insert(u"Side"_s, u"2"_s);
    return boards;
}

#endif
