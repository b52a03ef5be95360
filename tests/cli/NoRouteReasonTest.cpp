#include "cli/NoRouteReason.h"
#include "tests/support/PlainProvider.h"
#include "tests/support/RandomSystems.h"
#include "tests/support/TestRegistry.h"

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
                 {},
                 {u"Source"_s, u"DUT"_s}}
    {
    }

    /// All routes within these limits, by the search that knows no bounds.
    QList<RoutingPath> routes(int maxSwitches, int maxConnections)
    {
        Routing routing(&plain);
        routing.setMaxSwitchingComponentsPerPath(maxSwitches);
        routing.setMaxAdditionalNodesPerPath(maxConnections);
        return routing.findPaths(search.source.component, u"1"_s, search.destination.component, u"1"_s);
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

private:
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
