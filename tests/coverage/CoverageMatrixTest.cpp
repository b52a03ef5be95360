#include "tests/support/Copies.h"
#include "tests/support/PlainProvider.h"
#include "tests/support/RandomContacts.h"
#include "tests/support/RandomSystems.h"
#include "tests/support/SystemCount.h"
#include "tests/support/TestRegistry.h"

#include <velk/coverage/CoverageMatrix.h>
#include <velk/model/EDAException.h>
#include <velk/provider/MultipleEDAProvider.h>

#include <QTest>

#include <algorithm>
#include <map>
#include <set>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace {

using Pins = QList<NodeWithComponent>;

QString toText(const Pins &pins)
{
    QStringList texts;
    for (const auto &pin : pins)
        texts.append(pin.component->ref + u'/' + pin.node->pin);
    return texts.join(u' ');
}

QString lineOf(int switches)
{
    return switches == CoverageMatrix::unreached ? u"-"_s : QString::number(switches);
}

/// "U1/1: 2 - 0, without K1 0 2, first K1 K2" for each source, then "any K1 K2": all that a matrix tells.
QString toText(const CoverageMatrix &matrix, const EDAProvider &netlist)
{
    QString text;
    for (qsizetype source = 0; source < matrix.sources().size(); ++source) {
        const auto row = matrix.row(source);
        text += toText(matrix.sources().mid(source, 1)) + u':';
        for (const int switches : row)
            text += u' ' + lineOf(switches);
        const auto criticals = matrix.criticalOf(source, row);
        for (const auto &critical : criticals) {
            text += u", without "_s + critical.component->ref;
            for (const auto dut : critical.duts)
                text += u' ' + QString::number(dut);
        }
        text += u", first"_s;
        const auto onFirst = matrix.onFirstPathsOf(source, row);
        for (const auto &component : onFirst)
            text += u' ' + component->ref;
        text += u'\n';
    }
    text += u"any"_s;
    const auto components = netlist.getComponents();
    for (const auto &component : components)
        text += matrix.isOnAnyPath(component) ? u' ' + component->ref : QString();
    return text;
}

/// The same as lists of all paths tell it, and that there is none where a component is left out.
QString definition(Routing routing, const Pins &sources, const Pins &duts, const EDAProvider &netlist)
{
    routing.setMaxPaths(0);
    const auto components = netlist.getComponents();
    const auto refsOf = [](const TracedPath &path) {
        std::set<QString> refs;
        for (const auto &step : path.steps)
            refs.insert(step.component->ref);
        return refs;
    };
    QString text;
    std::set<QString> onAny;
    for (const auto &source : sources) {
        text += toText(Pins{source}) + u':';
        std::set<QString> onFirst;
        std::map<QString, QString> lost;
        for (qsizetype dut = 0; dut < duts.size(); ++dut) {
            const auto paths = routing.findTracedPathsBetween(source.component, source.node->pin,
                                                              duts.at(dut).component, duts.at(dut).node->pin);
            text += u' ' + (paths.isEmpty() ? u"-"_s : QString::number(paths.first().steps.size()));
            std::set<QString> onPaths;
            for (const auto &path : paths)
                onPaths.merge(refsOf(path));
            for (const QString &ref : onPaths) {
                Routing without = routing;
                without.setExcludedComponents(routing.excludedComponents() + QList{ref});
                if (without
                        .findTracedPathsBetween(source.component, source.node->pin, duts.at(dut).component,
                                                duts.at(dut).node->pin)
                        .isEmpty())
                    lost[ref] += u' ' + QString::number(dut);
            }
            onAny.merge(onPaths);
            if (!paths.isEmpty())
                onFirst.merge(refsOf(paths.first()));
        }
        for (const auto &component : components)
            text += lost.count(component->ref) ? u", without "_s + component->ref + lost[component->ref] : QString();
        text += u", first"_s;
        for (const auto &component : components)
            text += onFirst.count(component->ref) ? u' ' + component->ref : QString();
        text += u'\n';
    }
    text += u"any"_s;
    for (const auto &component : components)
        text += onAny.count(component->ref) ? u' ' + component->ref : QString();
    return text;
}

/// Two ways from IN to OUT, a relay that leads nowhere, a pin of each end on no net.
std::unique_ptr<StubProvider> twoWays()
{
    return systemOf(u"K4 Relay 1,2\nU1 SOURCE 1,2,3\nK1 relay 1,2\nK2 Relay 1,2\nK3 Relay 1,2\nK5 Relay 1,2\n"
                    "D1 DUT 1,2\nD2 dut 2,1,1\nJ1 Source 1\n"
                    "IN: K1/1 U1/1 D2/1\nMID: K1/2 K2/1 K3/1\nOUT: K2/2 K3/2 D1/1 K4/1 K5/1 U1/2\n"
                    "FAR: K4/2 D1/2\nEND: K5/2"_s);
}

/// Any pins, since any may be asked for.
Pins somePins(const EDAProvider &netlist, const QString &type, QRandomGenerator &random)
{
    Pins pins = CoverageMatrix::pinsOnNets(netlist, random.bounded(3) == 0 ? QString() : type);
    std::shuffle(pins.begin(), pins.end(), random);
    return pins.mid(0, random.bounded(1, 6));
}
}

class CoverageMatrixTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void listsPinsOnNets_data()
    {
        QTest::addColumn<QString>("type");
        QTest::addColumn<QMap<QString, QString>>("properties");
        QTest::addColumn<QString>("pins");
        const QMap<QString, QString> none;
        QTest::newRow("as the provider has them") << u"source"_s << none << u"U1/1 U1/2"_s;
        QTest::newRow("a pin that a part lists twice is one") << u"DUT"_s << none << u"D1/1 D1/2 D2/1"_s;
        QTest::newRow("narrowed") << u"DUT"_s << QMap<QString, QString>{{u"Id"_s, u"D2"_s}} << u"D2/1"_s;
        QTest::newRow("not the one of another type") << u"DUT"_s << QMap<QString, QString>{{u"Id"_s, u"U1"_s}} << u""_s;
        QTest::newRow("but of the one that the properties have")
            << u"DUT"_s << QMap<QString, QString>{{u"CompType"_s, u"SOURCE"_s}} << u"U1/1 U1/2"_s;
        QTest::newRow("any type") << u""_s << QMap<QString, QString>{{u"CompType"_s, u"relay"_s}} << u"K1/1 K1/2"_s;
    }
    void listsPinsOnNets()
    {
        QFETCH(QString, type);
        using Properties = QMap<QString, QString>;
        QFETCH(Properties, properties);
        QTEST(toText(CoverageMatrix::pinsOnNets(*twoWays(), type, properties)), "pins");
    }

    void tellsWhoReachesWhom()
    {
        const auto board = twoWays();
        MultipleEDAProvider joined({board.get()}, {});
        const auto textOn = [](EDAProvider *provider, int maxSwitches) {
            Routing routing(provider);
            routing.setMaxPaths(7);
            routing.setMaxSwitchingComponentsPerPath(maxSwitches);
            return toText(CoverageMatrix(routing, CoverageMatrix::pinsOnNets(*provider, u"Source"_s),
                                         CoverageMatrix::pinsOnNets(*provider, u"DUT"_s)),
                          *provider);
        };
        QCOMPARE(textOn(board.get(), 5), u"U1/1: 2 3 0, without K4 1, without K1 0 1, first K4 K1 K2\n"
                                         "U1/2: 0 1 2, without K4 1, without K1 2, first K4 K1 K2\n"
                                         "any K4 K1 K2 K3"_s);
        QCOMPARE(textOn(&joined, 5), u"U1#1/1: 2 3 0, without K1#1 0 1, without K4#1 1, first K1#1 K2#1 K4#1\n"
                                     "U1#1/2: 0 1 2, without K1#1 2, without K4#1 1, first K1#1 K2#1 K4#1\n"
                                     "any K1#1 K2#1 K3#1 K4#1"_s);
        QCOMPARE(textOn(&joined, 0), u"U1#1/1: - - 0, first\n"
                                     "U1#1/2: 0 1 -, without K4#1 1, first K4#1\n"
                                     "any K4#1"_s);
    }

    void heedsAdditionalNodes_data()
    {
        QTest::addColumn<QString>("board");
        QTest::addColumn<int>("maxNodes");
        QTest::addColumn<QString>("text");
        QTest::newRow("a source on a net in between is none")
            << u"U1 Source 1\nD1 DUT 1\nK1 Relay 1,2\nK2 Relay 1,2\n"
               "A: U1/1 K1/1\nB: K1/2 U1/1 K2/1\nC: K2/2 D1/1"_s
            << 0 << u"U1#1/1: 2, without K1#1 0, without K2#1 0, first K1#1 K2#1\nany K1#1 K2#1"_s;
        QTest::newRow("the way with fewer is found later")
            << u"U1 Source 1\nD1 DUT 1\nJ1 Source 1\nJ2 Source 1\nK1 Relay 1,2\nK2 Relay 1,2\nK3 Relay 1,2\n"
               "K4 Relay 1,2\nK5 Relay 1,2\nA: U1/1 K1/1 K2/1\nB: K1/2 K3/1 J1/1\nC: K2/2 K4/1\n"
               "D: K3/2 K4/2 K5/1 J2/1\nE: K5/2 D1/1"_s
            << 1
            << u"U1#1/1: 3, without K2#1 0, without K4#1 0, without K5#1 0, first K2#1 K4#1 K5#1\n"
               "any K2#1 K4#1 K5#1"_s;
    }
    void heedsAdditionalNodes()
    {
        QFETCH(QString, board);
        QFETCH(int, maxNodes);
        const auto system = systemOf(board);
        MultipleEDAProvider joined({system.get()}, {});
        Routing routing(&joined);
        routing.setMaxAdditionalNodesPerPath(maxNodes);
        const auto sources = CoverageMatrix::pinsOnNets(joined, u"Source"_s, {{u"Id"_s, u"U1"_s}});
        QTEST(toText(CoverageMatrix(routing, sources, CoverageMatrix::pinsOnNets(joined, u"DUT"_s)), joined), "text");
    }

    void isAValue()
    {
        const auto board = twoWays();
        const Routing routing(board.get());
        const auto sources = CoverageMatrix::pinsOnNets(*board, u"Source"_s);
        const auto duts = CoverageMatrix::pinsOnNets(*board, u"DUT"_s);
        const auto text = [&](const CoverageMatrix &matrix) { return toText(matrix, *board); };
        const CoverageMatrix matrix(routing, sources, duts);
        QCOMPARE(textsOfCopies(matrix, CoverageMatrix(routing, duts, sources), text), QStringList{text(matrix)});
    }

    void canBeCalledOff()
    {
        const auto board = twoWays();
        MultipleEDAProvider joined({board.get()}, {});
        for (EDAProvider *provider : {static_cast<EDAProvider *>(board.get()), static_cast<EDAProvider *>(&joined)}) {
            bool isCalledOff = false;
            Routing routing(provider);
            routing.setInterruption([&] { return isCalledOff; });
            const CoverageMatrix matrix(routing, CoverageMatrix::pinsOnNets(*provider, u"Source"_s),
                                        CoverageMatrix::pinsOnNets(*provider, u"DUT"_s));
            const auto row = matrix.row(0);
            const auto relay = matrix.onFirstPathsOf(0, row).first();
            isCalledOff = true;
            QVERIFY_THROWS_EXCEPTION(EDASearchCalledOffException, matrix.row(0));
            QVERIFY_THROWS_EXCEPTION(EDASearchCalledOffException, matrix.criticalOf(0, row));
            QVERIFY_THROWS_EXCEPTION(EDASearchCalledOffException, matrix.onFirstPathsOf(0, row));
            QVERIFY_THROWS_EXCEPTION(EDASearchCalledOffException, matrix.isOnAnyPath(relay));
        }
    }

    void equalsAllPathsOnRandomSystems()
    {
        const int systems = systemCount(2000);
        qsizetype criticals = 0;
        for (int seed = 0; seed < systems; ++seed) {
            QRandomGenerator random(static_cast<quint32>(seed));
            const auto boards = randomBoards(random);
            MultipleEDAProvider joined({boards[0].get(), boards[1].get()}, {u"Connector"_s});
            PlainProvider plain(joined);
            const bool isPlain = random.bounded(16) == 0;
            Routing routing(isPlain ? static_cast<EDAProvider *>(&plain) : &joined);
            routing.setMaxSwitchingComponentsPerPath(random.bounded(8) == 0 ? 2147483646 + random.bounded(2)
                                                                            : random.bounded(-1, isPlain ? 4 : 7));
            routing.setMaxAdditionalNodesPerPath(random.bounded(-1, 7));
            if (random.bounded(2) == 0)
                routing.setRelayContacts(randomContacts(joined, random));
            if (random.bounded(3) == 0)
                routing.setComponentTypesThatAreInterfaces({u"relay"_s, u"dut"_s, QString()});
            if (random.bounded(3) == 0) {
                routing.setExcludedComponents({joined.getComponents().at(random.bounded(4))->ref});
                routing.setExcludedNets({u"N0#1"_s});
            }
            if (random.bounded(4) == 0)
                routing.setRequiredComponents({joined.getComponents().at(random.bounded(6))->ref});
            const Pins sources = somePins(joined, u"Source"_s, random);
            const Pins duts = somePins(joined, u"DUT"_s, random);
            const QString expected = definition(routing, sources, duts, joined);
            const QString found = toText(CoverageMatrix(routing, sources, duts), joined);
            QVERIFY2(found == expected, qPrintable(u"seed %1, to %2:\n%3\nfound:\n%4\nexpected:\n%5"_s.arg(seed).arg(
                                            toText(duts), netsToText(joined.getNets()), found, expected)));
            criticals += expected.count(u"without"_s);
        }
        QVERIFY(criticals > systems / 2); // the systems do have them
    }
};

VELK_TEST(CoverageMatrixTest)

#include "CoverageMatrixTest.moc"
