#include "cli/RoutePage.h"
#include "cli/RouteTracing.h"
#include "tests/support/StubProvider.h"
#include "tests/support/TestRegistry.h"

#include <velk/routing/Routing.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRandomGenerator>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace Velk;
using namespace VelkCli;

namespace {

const QStringList connectorTypes{u"Connector"_s};
const QStringList interfaceTypes{u"Source"_s, u"DUT"_s};

/// The routes from pin 1 of U1#1 to pin 1 of D1#1.
struct Query
{
    Query(StubProvider &board, int maxSwitches)
        : netlist({&board}, connectorTypes)
        , report{netlist,
                 EDANetNode::create(u"U1#1"_s, u"1"_s),
                 EDANetNode::create(u"D1#1"_s, u"1"_s),
                 {},
                 false,
                 PinNames(netlist),
                 {u"a.net"_s},
                 connectorTypes,
                 interfaceTypes,
                 maxSwitches,
                 3}
    {
        Routing routing(&netlist);
        routing.setMaxSwitchingComponentsPerPath(maxSwitches);
        report.paths = routing.findPaths({{u"CompType"_s, u"Source"_s}, {u"End"_s, u"yes"_s}}, u"1"_s,
                                         {{u"CompType"_s, u"DUT"_s}, {u"End"_s, u"yes"_s}}, u"1"_s);
    }

    MultipleEDAProvider netlist;
    RouteReport report;
};

void addEnds(StubProvider &board, const QString &pinName = QString())
{
    for (const auto &component :
         {board.add(u"U1"_s, u"Source"_s, {u"1="_s + pinName}), board.add(u"D1"_s, u"DUT"_s, {u"1"_s})})
        component->properties.insert(u"End"_s, u"yes"_s);
}

/// Relays of two to four pins, with side connections here and there.
void fillAtRandom(StubProvider &board, QRandomGenerator &random)
{
    QList<QStringList> nodes(random.bounded(3, 7));
    const auto place = [&](const QString &node) { nodes[random.bounded(nodes.size())].append(node); };
    addEnds(board);
    place(u"U1/1"_s);
    place(u"D1/1"_s);
    for (int i = random.bounded(2, 7); i > 0; --i) {
        const QString ref = u"K%1"_s.arg(i);
        const QStringList pins = QStringList{u"1"_s, u"2"_s, u"3"_s, u"4"_s}.mid(0, random.bounded(2, 5));
        board.add(ref, u"Relay"_s, pins);
        for (const QString &pin : pins)
            place(ref + u'/' + pin);
    }
    for (int i = random.bounded(4); i > 0; --i) {
        board.add(u"J%1"_s.arg(i), u"DUT"_s, {u"1"_s});
        place(u"J%1/1"_s.arg(i));
    }
    for (qsizetype net = 0; net < nodes.size(); ++net)
        board.connect(u"N%1"_s.arg(net), nodes.at(net));
}

QJsonObject dataOf(const QByteArray &page)
{
    const QByteArray begin = "<script id=\"data\" type=\"application/json\">";
    const qsizetype from = page.indexOf(begin) + begin.size();
    return QJsonDocument::fromJson(page.mid(from, page.indexOf('<', from) - from)).object();
}

/// The text that routesToJson() makes of the same routes, put together from the tables of the page.
QByteArray asRoutes(const QJsonObject &data)
{
    const auto row = [&](const QString &table, const QJsonValue &place) { return data[table][place.toInt()]; };
    QJsonArray routes;
    for (const auto route : data[u"routes"_s].toArray()) {
        QJsonArray components;
        for (const auto place : route[u"crossings"_s].toArray())
            components.append(row(u"components"_s, row(u"crossings"_s, place)[u"component"_s]));
        QJsonArray connections;
        for (const auto place : route[u"connections"_s].toArray()) {
            const auto connection = row(u"connections"_s, place);
            connections.append(QJsonObject{{u"component"_s, row(u"components"_s, connection[u"component"_s])},
                                           {u"pin"_s, connection[u"pin"_s]}});
        }
        routes.append(QJsonObject{{u"switchingComponents"_s, components}, {u"additionalConnections"_s, connections}});
    }
    return QJsonDocument(QJsonObject{{u"routes"_s, routes}}).toJson();
}

/// What a route passes: "N0#1 K1#1/1/2 N3#1".
QString wayText(const RouteTracing &tracing, const TracedRoute &route, qsizetype first)
{
    QString text = tracing.net(first).name;
    for (const Crossing &crossing : route.crossings)
        text += u" %1/%2/%3 %4"_s.arg(crossing.ref, crossing.entryPin, crossing.exitPin, tracing.net(crossing.to).name);
    return text;
}

QStringList waysOf(const Query &query)
{
    const RouteTracing tracing(query.report);
    QStringList ways;
    for (const auto &route : tracing.traced())
        ways.append(wayText(tracing, route, tracing.netOf(*query.report.source)));
    return ways;
}

/// Empty if the route can be taken as it is traced.
QString faultIn(const RouteTracing &tracing, const RoutingPath &path, const TracedRoute &route, qsizetype first)
{
    if (route.crossings.size() != path.switchingComponents.size())
        return u"number of switches"_s;
    QList<qsizetype> visited{first};
    for (qsizetype i = 0; i < route.crossings.size(); ++i) {
        const Crossing &crossing = route.crossings.at(i);
        if (crossing.ref != path.switchingComponents.at(i)->ref)
            return u"component"_s;
        if (crossing.from != visited.last() || visited.contains(crossing.to))
            return u"order of nets"_s;
        if (!tracing.net(crossing.from).findNode(crossing.ref, crossing.entryPin) ||
            !tracing.net(crossing.to).findNode(crossing.ref, crossing.exitPin))
            return u"pins"_s;
        visited.append(crossing.to);
    }
    for (qsizetype i = 0; i < path.additionalNodes.size(); ++i) {
        const qsizetype net = route.connectedNets.value(i, -1);
        if (!visited.mid(1, visited.size() - 2).contains(net) ||
            !tracing.net(net).containsNode(path.additionalNodes.at(i)))
            return u"side connections"_s;
    }
    return tracing.isLast(visited.last()) ? QString() : u"end"_s;
}
}

class RoutePageTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    // No two routes of a system without repeated nodes and pins are the same, so if each can be taken and all differ,
    // they are the ones that the search has found.
    void routesAreTracedOnRandomSystems()
    {
        qsizetype alike = 0;
        for (quint32 seed = 0; seed < 200; ++seed) {
            QRandomGenerator random(seed);
            StubProvider board;
            fillAtRandom(board, random);
            const Query query(board, 4);
            const RouteTracing tracing(query.report);
            const qsizetype first = tracing.netOf(*query.report.source);
            const auto routes = tracing.traced();
            QCOMPARE(routes.size(), query.report.paths.size());
            QSet<QString> ways;
            QSet<QStringList> components;
            for (qsizetype i = 0; i < routes.size(); ++i) {
                const QString fault = faultIn(tracing, query.report.paths.at(i), routes.at(i), first);
                QVERIFY2(fault.isEmpty(), qPrintable(u"seed %1, route %2: %3"_s.arg(seed).arg(i).arg(fault)));
                ways.insert(wayText(tracing, routes.at(i), first));
                QStringList refs;
                for (const auto &component : query.report.paths.at(i).switchingComponents)
                    refs.append(component->ref);
                components.insert(refs);
            }
            QVERIFY2(ways.size() == routes.size(), qPrintable(u"seed %1"_s.arg(seed)));
            alike += routes.size() - components.size();
            QCOMPARE(asRoutes(dataOf(routesToPage(query.report))), routesToJson(query.report));
        }
        QVERIFY(alike > 500); // else nothing would have to be told apart
    }

    // The search goes by the first pin of the double relay first.
    void routesOfTheSameComponents()
    {
        StubProvider board;
        addEnds(board);
        board.add(u"K1"_s, u"Relay"_s, {u"1"_s, u"2"_s, u"3"_s, u"4"_s});
        board.connect(u"A"_s, {u"U1/1"_s, u"K1/1"_s, u"K1/3"_s});
        board.connect(u"B"_s, {u"D1/1"_s, u"K1/2"_s, u"K1/4"_s});
        QCOMPARE(waysOf(Query(board, 1)), (QStringList{u"A#1 K1#1/1/2 B#1"_s, u"A#1 K1#1/1/4 B#1"_s,
                                                       u"A#1 K1#1/3/2 B#1"_s, u"A#1 K1#1/3/4 B#1"_s}));
    }

    void componentsCrossedTwice()
    {
        StubProvider board;
        addEnds(board);
        board.add(u"K1"_s, u"Relay"_s, {u"1"_s, u"2"_s, u"3"_s, u"4"_s});
        board.add(u"K2"_s, u"Relay"_s, {u"1"_s, u"2"_s});
        board.connect(u"A"_s, {u"U1/1"_s, u"K1/1"_s});
        board.connect(u"B"_s, {u"K1/2"_s, u"K2/1"_s});
        board.connect(u"C"_s, {u"K2/2"_s, u"K1/3"_s});
        board.connect(u"D"_s, {u"K1/4"_s, u"D1/1"_s});
        QCOMPARE(waysOf(Query(board, 2)),
                 (QStringList{u"A#1 K1#1/1/4 D#1"_s, u"A#1 K1#1/1/2 B#1 K2#1/1/2 C#1 K1#1/3/4 D#1"_s,
                              u"A#1 K1#1/1/3 C#1 K2#1/2/1 B#1 K1#1/2/4 D#1"_s}));
    }

    void anyTextStaysData_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("end of the element") << u"</script><script>alert(1)</script>"_s;
        QTest::newRow("comment") << u"<!-- <script>"_s;
        QTest::newRow("place of a part") << u"@script@"_s;
        QTest::newRow("quotes and escapes") << u"\"'\\u003c\\"_s;
        QTest::newRow("control characters") << u"\x01\n\r\t\x7f"_s + QChar(u'\0');
        QTest::newRow("line separators") << u"\u2028\u2029"_s;
        QTest::newRow("half a character") << u"a"_s + QChar(0xd800) + u'b' + QChar(0xdc00);
        QTest::newRow("a megabyte") << QString(1'000'000, u'<');
    }
    void anyTextStaysData()
    {
        QFETCH(QString, text);
        StubProvider board;
        addEnds(board, text);
        board.add(text, u"Relay"_s, {u"1"_s, u"2"_s})->properties.insert(text, text);
        board.connect(text, {});
        board.nets.last()->addNode(u"U1"_s, u"1"_s)->addNode(text, u"1"_s);
        board.connect(u"B"_s, {});
        board.nets.last()->addNode(text, u"2"_s)->addNode(u"D1"_s, u"1"_s);
        const Query query(board, 1);
        const QByteArray page = routesToPage(query.report);
        const QJsonObject data = dataOf(page);
        QCOMPARE(data[u"nets"_s][0][u"name"_s].toString(), text + u"#1"_s);
        QCOMPARE(data[u"source"_s][u"pin"_s][u"name"_s].toString(), text);
        QCOMPARE(asRoutes(data), routesToJson(query.report));
        QCOMPARE(page.count("</script>"), 2);
        QCOMPARE(page.count("\u2028"), 0);
    }

    void noRoute()
    {
        StubProvider board;
        addEnds(board);
        const QJsonObject data = dataOf(routesToPage(Query(board, 5).report));
        QCOMPARE(data[u"routes"_s].toArray().size(), 0);
        QCOMPARE(data[u"destination"_s][u"text"_s].toString(), u"D1#1.1"_s);
        QCOMPARE(data[u"limits"_s][u"switches"_s].toInt(), 5);
    }
};

VELK_TEST(RoutePageTest)

#include "RoutePageTest.moc"
