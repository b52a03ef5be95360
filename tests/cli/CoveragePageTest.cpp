#include "cli/formats/html/CoveragePage.h"
#include "tests/support/PageData.h"
#include "tests/support/StubProvider.h"
#include "tests/support/TestRegistry.h"

#include <velk/provider/MultipleEDAProvider.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace Velk;
using namespace VelkCli;

namespace {

/// U1.1 reaches J1.1 directly and J1.2 over K1 and one of K2 and K3, between which U2 is connected; nothing reaches
/// J1.3.
struct Board : StubProvider
{
    Board()
    {
        add(u"U1"_s, u"Source"_s, {u"1=HI"_s});
        add(u"U2"_s, u"Source"_s, {u"1"_s});
        add(u"J1"_s, u"DUT"_s, {u"1"_s, u"2=<b>"_s, u"3"_s});
        for (const QString &ref : {u"K1"_s, u"K2"_s, u"K3"_s})
            add(ref, u"Relay"_s, {u"1"_s, u"2"_s});
        connect(u"A"_s, {u"U1/1"_s, u"J1/1"_s, u"K1/1"_s});
        connect(u"B"_s, {u"U2/1"_s, u"K1/2"_s, u"K2/1"_s, u"K3/1"_s});
        connect(u"C"_s, {u"K2/2"_s, u"K3/2"_s, u"J1/2"_s});
        connect(u"D"_s, {u"J1/3"_s});
        connect(u"E"_s, {u"J1/3"_s}); // a pin is shown on its first net
    }
};

/// The matrix of the board, as the command makes it.
struct BoardReport
{
    explicit BoardReport(bool isAsDrawn = false)
        : netlist({&board}, {})
        , report{netlist,
                 Routing(&netlist),
                 PinNames(netlist),
                 {u"a.net"_s},
                 {},
                 CoverageMatrix::pinsOnNets(netlist, u"Source"_s),
                 CoverageMatrix::pinsOnNets(netlist, u"DUT"_s)}
    {
        if (!isAsDrawn) {
            report.switching = SwitchingModel(netlist);
            report.routing.setRelayContacts(report.switching->relayContacts());
        }
        report.routing.setExcludedComponents({u"K9#1"_s});
        report.routing.setExcludedNets({u"E"_s});
        report.unknownRelays = {u"K3#1"_s};
        const CoverageMatrix matrix(report.routing, report.sources, report.duts);
        for (qsizetype source = 0; source < report.sources.size(); ++source) {
            QList<QList<TracedPath>> routes;
            for (const auto &[node, component] : std::as_const(report.duts)) {
                const auto &from = report.sources.at(source);
                routes.append(
                    report.routing.findTracedPathsBetween(from.component, from.node->pin, component, node->pin));
            }
            report.rows.append(matrix.row(source));
            report.firstRoutes.append(firstRoutesOf(routes));
        }
    }

    Board board;
    MultipleEDAProvider netlist;
    CoverageReport report;
};

QString refAt(const QJsonObject &data, const QJsonValue &component)
{
    return data[u"components"_s][component.toInt()][u"ref"_s].toString();
}

/// "U1#1.HI on A#1"
QStringList ends(const QJsonObject &data, const QString &side)
{
    QStringList texts;
    for (const auto end : data[side].toArray()) {
        const QString net = data[u"nets"_s][end[u"net"_s].toInt()][u"name"_s].toString();
        texts.append(end[u"text"_s].toString() + u" on "_s + net);
    }
    return texts;
}

/// For each pair "2: K1#1 from A#1 to B#1, also U2#1.1" with the number of routes, or "none".
QStringList routes(const QJsonObject &data)
{
    const auto netName = [&](const QJsonValue &net) { return data[u"nets"_s][net.toInt()][u"name"_s].toString(); };
    QStringList texts;
    for (const auto row : data[u"routes"_s].toArray()) {
        for (const auto cell : row.toArray()) {
            QStringList parts;
            for (const auto place : cell[1].toArray()) {
                const auto crossing = data[u"crossings"_s][place.toInt()];
                parts.append(u"%1 from %2 to %3"_s.arg(refAt(data, crossing[u"component"_s]),
                                                       netName(crossing[u"from"_s]), netName(crossing[u"to"_s])));
            }
            for (const auto place : cell[2].toArray())
                parts.append(u"also "_s + data[u"pins"_s][place.toInt()][u"text"_s].toString());
            texts.append(cell.isNull() ? u"none"_s : u"%1: %2"_s.arg(cell[0].toInt()).arg(parts.join(u", "_s)));
        }
    }
    return texts;
}

QString compact(const QJsonValue &value)
{
    return QString::fromUtf8(QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact)).sliced(1).chopped(1);
}
}

class CoveragePageTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void showsEachPair()
    {
        const BoardReport board;
        const auto data = dataOf(coverageToPage(board.report));
        QCOMPARE(ends(data, u"sources"_s), (QStringList{u"U1#1.HI on A#1"_s, u"U2#1.1 on B#1"_s}));
        QCOMPARE(ends(data, u"duts"_s), (QStringList{u"J1#1.1 on A#1"_s, u"J1#1.<b> on C#1"_s, u"J1#1.3 on D#1"_s}));
        QCOMPARE(compact(data[u"switches"_s]), u"[[0,2,null],[1,1,null]]"_s);
        QCOMPARE(routes(data),
                 (QStringList{u"1: "_s, u"2: K1#1 from A#1 to B#1, K2#1 from B#1 to C#1, also U2#1.1"_s, u"none"_s,
                              u"1: K1#1 from B#1 to A#1"_s, u"2: K2#1 from B#1 to C#1"_s, u"none"_s}));
        QCOMPARE(compact(data[u"limits"_s]), u"{\"connections\":3,\"switches\":5}"_s);
        QCOMPARE(compact(data[u"excluded"_s]), u"{\"components\":[\"K9#1\"],\"nets\":[\"E\"]}"_s);
        QCOMPARE(compact(data[u"unknownRelays"_s]), u"[\"K3#1\"]"_s);
        QCOMPARE(data[u"mostRoutes"_s].toInt(), 10);
        QVERIFY(!data.contains(u"asDrawn"_s) && !data.contains(u"critical"_s) && !data.contains(u"compared"_s));
    }

    void showsWhatIsCriticalAndCompared()
    {
        BoardReport board;
        board.report.critical = {{board.netlist.getComponentByRef(u"K1#1"_s), {{0, 1}, {1, 0}}}};
        board.report.comparison = CoverageComparison{u"old.json"_s,
                                                     {{u"U9#1.1"_s, u"J1#1.1"_s, 2, CoverageMatrix::unreached}},
                                                     {{u"U1#1.1"_s, u"J1#1.1"_s, CoverageMatrix::unreached, 0}},
                                                     {{u"U1#1.1"_s, u"J1#1.2"_s, 1, 2}},
                                                     {{u"U2#1.1"_s, u"J1#1.2"_s, 3, 1}}};
        const auto data = dataOf(coverageToPage(board.report));
        QCOMPARE(refAt(data, data[u"critical"_s][0][u"component"_s]), u"K1#1"_s);
        QCOMPARE(compact(data[u"critical"_s][0][u"lost"_s]), u"[1,3]"_s);
        QCOMPARE(compact(data[u"compared"_s]), u"{\"file\":\"old.json\",\"gained\":[[\"U1#1.1\",\"J1#1.1\",null,0]],"
                                               "\"longer\":[[\"U1#1.1\",\"J1#1.2\",1,2]],"
                                               "\"lost\":[[\"U9#1.1\",\"J1#1.1\",2,null]],"
                                               "\"shorter\":[[\"U2#1.1\",\"J1#1.2\",3,1]]}"_s);
    }

    void tellsThatWaysAreAsDrawn()
    {
        const auto data = dataOf(coverageToPage(BoardReport(true).report));
        QCOMPARE(data[u"asDrawn"_s].toBool(), true);
        QVERIFY(data[u"crossings"_s][0][u"position"_s].isNull());
    }
};

VELK_TEST(CoveragePageTest)

#include "CoveragePageTest.moc"
