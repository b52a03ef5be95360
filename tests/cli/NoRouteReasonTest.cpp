#include "cli/NoRouteReason.h"
#include "cli/commands/Netlist.h"
#include "tests/support/PlainProvider.h"
#include "tests/support/RandomSystems.h"
#include "tests/support/TestRegistry.h"

#include <velk/naming/References.h>
#include <velk/provider/MultipleEDAProvider.h>

#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;
using namespace Velk;
using namespace VelkCli;

namespace {

constexpr int any = std::numeric_limits<int>::max() - 1;

/// A search on random boards, with limits of which many are too low.
class RandomSearch
{
public:
    explicit RandomSearch(quint32 seed)
        : random(seed)
        , boards(randomBoards(random))
        , joined({boards[0].get(), boards[1].get()}, {u"Connector"_s})
        , plain(joined)
        , search{joined,
                 Routing(&joined),
                 end(u"U1#1"_s),
                 end(random.bounded(2) == 0 ? u"D1#1"_s : u"D1#2"_s),
                 {random.bounded(20) == 0 ? any + 1 : random.bounded(-2, 4), random.bounded(-2, 3)},
                 {{u"Relay"_s, u"Resistor"_s}, {u"Source"_s, u"DUT"_s}, {u"Connector"_s}}}
    {
    }

    /// All routes within these limits, by the search that knows no bounds.
    QList<RoutingPath> routes(int maxSwitches, int maxConnections)
    {
        Routing routing(&plain);
        routing.setMaxSwitchingComponentsPerPath(maxSwitches);
        routing.setMaxAdditionalNodesPerPath(maxConnections);
        return routing.findPathsBetween(search.source.component, u"1"_s, search.destination.component, u"1"_s);
    }

private:
    RouteEnd end(const QString &ref) const { return {joined.getComponentByRef(ref), EDANetNode::create(ref, u"1"_s)}; }

    QRandomGenerator random;
    const std::vector<std::unique_ptr<StubProvider>> boards;
    MultipleEDAProvider joined;
    PlainProvider plain;

public:
    const VainSearch search;
};
}

class NoRouteReasonTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void agreesWithTheSearch()
    {
        int unconnected = 0;
        QMap<QString, int> counts; // of what was found to help
        for (quint32 seed = 0; seed < 3000; ++seed) {
            RandomSearch random(seed);
            const RouteLimits limits = random.search.limits;
            if (!random.routes(limits.switches, limits.connections).isEmpty())
                continue;
            const QByteArray place = "seed " + QByteArray::number(seed);
            const bool connected = !random.routes(any, any).isEmpty();
            QVERIFY2(isConnected(random.search) == connected, place);
            if (!connected) {
                ++unconnected;
                continue;
            }
            QStringList expected;
            if (!random.routes(any, limits.connections).isEmpty())
                expected.append(u"switches"_s);
            if (!random.routes(limits.switches, any).isEmpty())
                expected.append(u"connections"_s);
            if (expected.isEmpty())
                expected.append(u"both"_s);
            QStringList found;
            for (const WiderLimits &wider : widerLimits(random.search)) {
                found.append(verified(random, wider));
                ++counts[found.last()];
            }
            QVERIFY2(found == expected, place + ": " + found.join(u' ').toUtf8());
        }
        QVERIFY(unconnected > 100 && counts[u"switches"_s] > 100 && counts[u"connections"_s] > 100);
        QVERIFY(counts[u"both"_s] > 10);
    }

    // On systems where each node is a pin of its own; the search has its rules for others.
    void reachAgreesWithTheSearch()
    {
        int reached = 0;
        QMap<qsizetype, int> counts; // by the number of components between the ends
        for (quint32 seed = 0; seed < 9000; ++seed) {
            RandomSearch random(seed);
            const VainSearch &search = random.search;
            if (hasOddNodes(search.netlist) || isConnected(search))
                continue;
            const NetlistReach reach(search.netlist, search.types, search.source.node, search.destination.node);
            const QByteArray place = "seed " + QByteArray::number(seed);
            QStringList nets = reach.fromSource().nets;
            nets.sort();
            const QStringList expected = netsReached(search);
            QVERIFY2(nets == expected, place + ": " + nets.join(u' ').toUtf8());
            reached += nets.size() > 1 ? 1 : 0;
            QStringList between = refsOf(reach.componentsBetween());
            between.sort();
            QVERIFY2(between == fusesBetween(search), place + ": " + between.join(u' ').toUtf8());
            ++counts[between.size()];
        }
        QVERIFY(reached > 100 && counts[0] > 100 && counts[1] > 30 && counts[2] > 0);
    }

    void reachEndsAtConnectors()
    {
        StubProvider first;
        first.add(u"U1"_s, u"Source"_s, {u"1"_s});
        first.add(u"K1"_s, u"Relay"_s, {u"1"_s, u"2"_s});
        for (const QString &ref : {u"X1"_s, u"X2"_s})
            first.add(ref, u"Connector"_s, {u"1"_s, u"2"_s}, ref);
        first.connect(u"A"_s, {u"U1/1"_s, u"K1/1"_s, u"X1/1"_s, u"X1/2"_s});
        first.connect(u"B"_s, {u"K1/2"_s, u"X2/1"_s});
        first.connect(u"later net"_s, {u"K1/2"_s}); // to which no route leads
        StubProvider second;
        second.add(u"X1"_s, u"connector"_s, {u"1"_s, u"2"_s}, u"X1"_s);
        second.add(u"X2"_s, u"Connector"_s, {u"1"_s, u"2"_s}, u"x2"_s);
        second.add(u"C1"_s, u""_s, {u"1"_s, u"2"_s});
        second.add(u"C2"_s, u"Fuse"_s, {u"1"_s, u"2"_s});
        second.add(u"D1"_s, u"DUT"_s, {u"1"_s, u"2"_s});
        second.connect(u"C"_s, {u"X1/1"_s, u"C1/1"_s});
        second.connect(u"D"_s, {u"C1/2"_s, u"C2/1"_s});
        second.connect(u"E"_s, {u"C2/2"_s, u"X2/1"_s, u"D1/1"_s});
        second.connect(u"F"_s, {u"D1/2"_s});
        const MultipleEDAProvider joined({&first, &second}, {u"Connector"_s});
        const auto reached = [&](const QString &source, const QString &destination) {
            const auto node = [](const QString &text) {
                return EDANetNode::create(text.section(u'/', 0, 0), text.section(u'/', 1));
            };
            const NetlistReach reach(joined, {{u"relay"_s}, {u"Source"_s, u"DUT"_s}, {u"Connector"_s}}, node(source),
                                     node(destination));
            return textOf(reach.fromSource()) + u"; "_s + textOf(reach.fromDestination()) + u"; "_s +
                   refsOf(reach.componentsBetween()).join(u' ');
        };
        const QString all = u"A#1+C#2 B#1 on 1 2, open X1#1.2 X2#1.1"_s;
        QCOMPARE(reached(u"U1#1/1"_s, u"D1#2/1"_s), all + u"; E#2 on 2, open X2#2.1; C1#2 C2#2"_s);
        QCOMPARE(reached(u"U1#1/1"_s, u"D1#2/2"_s), all + u"; F#2 on 2, open , alone; "_s);
        QCOMPARE(reached(u"U1#1/1"_s, u"D1#2/3"_s), all + u";  on , open , alone; "_s);
        // The second end alone may be reached by crossing its component.
        QCOMPARE(reached(u"K1#1/1"_s, u"K1#1/1"_s), u"A#1+C#2 on 1 2, open X1#1.2; "_s + all + u"; "_s);
    }

private:
    static QString textOf(const Reach &reach)
    {
        QStringList boards;
        for (const int board : reach.boards)
            boards.append(QString::number(board));
        QStringList pins;
        for (const auto &node : reach.unpluggedPins)
            pins.append(node->ref + u'.' + node->pin);
        return u"%1 on %2, open %3%4"_s.arg(reach.nets.join(u' '), boards.join(u' '), pins.join(u' '),
                                            reach.isAlone ? u", alone"_s : QString());
    }

    static bool hasOddNodes(const EDAProvider &netlist)
    {
        QSet<QString> seen;
        for (const auto &net : netlist.getNets()) {
            QSet<QString> pins;
            for (const auto &node : std::as_const(net->nodes)) {
                pins.insert(node->ref + u'.' + node->pin);
                const auto component = netlist.getComponentByRef(node->ref);
                const auto part = component ? netlist.getPartByName(component->part) : nullptr;
                if (part && part->getPinByNumber(node->pin).isNull())
                    return true;
            }
            if (seen.intersects(pins))
                return true;
            seen.unite(pins);
        }
        return false;
    }

    /// Those that hold a pin to which there is a route.
    static QStringList netsReached(const VainSearch &search)
    {
        Routing routing = search.routing;
        routing.setMaxSwitchingComponentsPerPath(any);
        routing.setMaxAdditionalNodesPerPath(any);
        routing.setMaxPaths(1);
        QStringList result;
        for (const auto &net : search.netlist.getNets()) {
            const auto isReached = [&](const auto &node) {
                const auto component = search.netlist.getComponentByRef(node->ref);
                const auto part = component ? search.netlist.getPartByName(component->part) : nullptr;
                return part && part->getPinByNumber(node->pin) &&
                       !routing.findPathsBetween(search.source.component, u"1"_s, component, node->pin).isEmpty();
            };
            if (std::any_of(net->nodes.cbegin(), net->nodes.cend(), isReached))
                result.append(net->name);
        }
        result.sort();
        return result;
    }

    /// Those on routes with the fewest fuses, if fuses could be switched.
    static QStringList fusesBetween(const VainSearch &search)
    {
        Routing routing = search.routing;
        routing.setComponentTypesThatAreSwitchable({u"Relay"_s, u"Resistor"_s, u"Fuse"_s});
        routing.setMaxSwitchingComponentsPerPath(any);
        routing.setMaxAdditionalNodesPerPath(any);
        QStringList result;
        qsizetype fewest = std::numeric_limits<qsizetype>::max();
        for (const auto &path :
             routing.findPathsBetween(search.source.component, u"1"_s, search.destination.component, u"1"_s)) {
            QStringList fuses;
            for (const auto &component : path.switchingComponents) {
                if (component->type() == u"Fuse"_s)
                    fuses.append(component->ref);
            }
            if (fuses.size() < fewest)
                result.clear();
            fewest = std::min(fewest, fuses.size());
            if (fuses.size() == fewest)
                result += fuses;
        }
        result.sort();
        result.removeDuplicates();
        return result;
    }

    /// Which limits were widened; another text where there is no such route or a lower limit would do.
    static QString verified(RandomSearch &random, const WiderLimits &wider)
    {
        const auto [switches, connections] = wider.limits;
        const auto routes = random.routes(switches, connections);
        if (routes.isEmpty() || routes.first().switchingComponents.size() != wider.switches ||
            routes.first().additionalNodes.size() != wider.connections)
            return u"no such route"_s;
        const bool moreSwitches = switches != random.search.limits.switches;
        const bool moreConnections = connections != random.search.limits.connections;
        if ((moreSwitches && !random.routes(switches - 1, connections).isEmpty()) ||
            (moreConnections && !random.routes(switches, connections - 1).isEmpty()))
            return u"not the least"_s;
        if (moreSwitches && moreConnections)
            return random.routes(switches - 1, any).isEmpty() ? u"both"_s : u"not the fewest switches"_s;
        return moreSwitches ? u"switches"_s : u"connections"_s;
    }
};

VELK_TEST(NoRouteReasonTest)

#include "NoRouteReasonTest.moc"
