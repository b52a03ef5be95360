#include "cli/formats/html/RoutePage.h"
#include "cli/formats/RouteFormats.h"
#include "tests/support/PageData.h"
#include "tests/support/RandomSystems.h"
#include "tests/support/TestRegistry.h"

#include <velk/naming/References.h>
#include <velk/provider/MultipleEDAProvider.h>
#include <velk/routing/Routing.h>

#include <QBuffer>
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

/// The routes from pin 1 of U1#1 to pin 1 of D1#1.
struct Query
{
    Query(const QList<EDAProvider *> &boards, int maxSwitches, bool isAsDrawn = false)
        : netlist(boards, connectorTypes)
        , report{netlist,
                 Routing(&netlist),
                 EDANetNode::create(u"U1#1"_s, u"1"_s),
                 EDANetNode::create(u"D1#1"_s, u"1"_s),
                 PinNames(netlist),
                 {u"a.net"_s},
                 {}}
    {
        if (!isAsDrawn) {
            report.switching = SwitchingModel(netlist);
            report.routing.setRelayContacts(report.switching->relayContacts());
        }
        report.routing.setMaxSwitchingComponentsPerPath(maxSwitches);
        const auto source = netlist.getComponentByRef(u"U1#1"_s);
        const auto destination = netlist.getComponentByRef(u"D1#1"_s);
        report.tracedPaths = report.routing.findTracedPathsBetween(source, u"1"_s, destination, u"1"_s);
    }

    MultipleEDAProvider netlist;
    RouteReport report;
};

/// Whether the netlist has all parts, of which the command reads none without.
bool hasAllParts(const EDAProvider &netlist)
{
    const auto components = netlist.getComponents();
    return std::all_of(components.cbegin(), components.cend(),
                       [&](const auto &component) { return !netlist.getPartByName(component->part).isNull(); });
}

/// The routes of the report as JSON tells them, without the positions that the page tells at each crossing.
QJsonArray jsonOf(const RouteReport &report)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    routesToJson(report, buffer);
    QJsonArray routes;
    for (const auto route : QJsonDocument::fromJson(buffer.data())[u"routes"_s].toArray()) {
        QJsonObject members = route.toObject();
        members.remove(u"positions"_s);
        routes.append(members);
    }
    return routes;
}

/// What routesToJson() makes of the same routes, put together from the tables of the page.
QJsonArray asRoutes(const QJsonObject &data)
{
    const auto row = [&](const QString &table, const QJsonValue &place) { return data[table][place.toInt()]; };
    QJsonArray routes;
    for (const auto route : data[u"routes"_s].toArray()) {
        QJsonArray components;
        for (const auto place : route[u"crossings"_s].toArray()) {
            const auto crossing = row(u"crossings"_s, place);
            QJsonObject component = row(u"components"_s, crossing[u"component"_s]).toObject();
            component.insert(u"pins"_s,
                             QJsonArray{crossing[u"entry"_s][u"number"_s], crossing[u"exit"_s][u"number"_s]});
            component.insert(u"position"_s, crossing[u"position"_s]);
            components.append(component);
        }
        QJsonArray connections;
        for (const auto place : route[u"connections"_s].toArray()) {
            const auto connection = row(u"pins"_s, place);
            connections.append(QJsonObject{{u"component"_s, row(u"components"_s, connection[u"component"_s])},
                                           {u"pin"_s, connection[u"pin"_s]}});
        }
        routes.append(QJsonObject{{u"switchingComponents"_s, components}, {u"additionalConnections"_s, connections}});
    }
    return routes;
}

/// "N0#1 X1/2: X1#1 X1#2" for each place where boards meet on a net.
QStringList jointsOf(const Query &query, const QString &netName)
{
    QMap<QString, QStringList> refs;
    for (const auto &net : query.netlist.getNets()) {
        for (const auto &node : std::as_const(net->nodes)) {
            const auto component = query.netlist.getComponentByRef(node->ref);
            if (net->name == netName && component && component->type().toLower() == u"connector"_s)
                refs[component->identifier() + u'/' + node->pin].append(node->ref);
        }
    }
    QStringList joints;
    for (auto it = refs.cbegin(); it != refs.cend(); ++it) {
        if (it->size() > 1)
            joints.append(it.key() + u": "_s + it->join(u' '));
    }
    return joints;
}

/// The same of a net on the page.
QStringList jointsOf(const QJsonObject &data, const QJsonValue &net)
{
    QStringList joints;
    for (const auto joint : net[u"joints"_s].toArray()) {
        QStringList refs;
        QString identifier;
        for (const auto place : joint[u"components"_s].toArray()) {
            const auto component = data[u"components"_s][place.toInt()];
            refs.append(component[u"ref"_s].toString());
            identifier = component[u"properties"_s][u"Identifier"_s].toString();
        }
        joints.append(identifier + u'/' + joint[u"pin"_s][u"number"_s].toString() + u": "_s + refs.join(u' '));
    }
    return joints;
}

/// The names of the nets on which the side connections of a route lie, as the page has them.
QStringList connectedNets(const QJsonObject &data, qsizetype route)
{
    QStringList names;
    for (const auto place : data[u"routes"_s][route][u"connections"_s].toArray()) {
        const int net = data[u"pins"_s][place.toInt()][u"net"_s].toInt();
        names.append(data[u"nets"_s][net][u"name"_s].toString());
    }
    return names;
}
}

class RoutePageTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void showsRoutesOfRandomSystems()
    {
        qsizetype joints = 0;
        for (quint32 seed = 0; seed < 1500; ++seed) {
            QRandomGenerator random(seed);
            const auto boards = randomBoards(random);
            const Query query({boards[0].get(), boards[1].get()}, 3, seed % 2 == 0);
            if (!hasAllParts(query.netlist) || query.report.routeCount() > 500)
                continue;
            const auto data = dataOf(routesToPage(query.report));
            QCOMPARE(asRoutes(data), jsonOf(query.report));
            for (qsizetype i = 0; i < query.report.tracedPaths.size(); ++i) {
                QStringList nets;
                for (const TracedNode &connection : query.report.tracedPaths.at(i).additionalNodes)
                    nets.append(connection.net->name);
                QCOMPARE(connectedNets(data, i), nets);
            }
            for (const auto net : data[u"nets"_s].toArray()) {
                QCOMPARE(jointsOf(data, net), jointsOf(query, net[u"name"_s].toString()));
                joints += net[u"joints"_s].toArray().size();
            }
        }
        QVERIFY(joints > 100);
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
        board.add(u"U1"_s, u"Source"_s, {u"1="_s + text});
        board.add(u"D1"_s, u"DUT"_s, {u"1"_s});
        board.add(text, u"Relay"_s, {u"1"_s, u"2"_s})->properties.insert(text, text);
        board.connect(text, {});
        board.nets.last()->addNode(u"U1"_s, u"1"_s)->addNode(text, u"1"_s);
        board.connect(u"B"_s, {});
        board.nets.last()->addNode(text, u"2"_s)->addNode(u"D1"_s, u"1"_s);
        const Query query({&board}, 1);
        const QByteArray page = routesToPage(query.report);
        const QJsonObject data = dataOf(page);
        QCOMPARE(data[u"nets"_s][0][u"name"_s].toString(), text + u"#1"_s);
        QCOMPARE(data[u"source"_s][u"pin"_s][u"name"_s].toString(), text);
        QCOMPARE(asRoutes(data), jsonOf(query.report));
        QCOMPARE(page.count("</script>"), 2);
        QCOMPARE(page.count("\u2028"), 0);
    }
};

VELK_TEST(RoutePageTest)

#include "RoutePageTest.moc"
