#include "cli/formats/RouteRelays.h"
#include "cli/commands/LeftOutWays.h"
#include "tests/support/RandomRelays.h"
#include "tests/support/TestRegistry.h"

#include <velk/naming/References.h>
#include <velk/provider/MultipleEDAProvider.h>

#include <QTest>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;
using namespace Velk;
using namespace VelkCli;

namespace {

/// The routes from U1 to J1, each by its pin 1.
RouteReport routesOf(MultipleEDAProvider &netlist)
{
    const auto source = netlist.getComponentByRef(u"U1#1"_s);
    const auto destination = netlist.getComponentByRef(u"J1#1"_s);
    Routing routing(&netlist);
    const SwitchingModel switching(netlist);
    routing.setRelayContacts(switching.relayContacts());
    RouteReport report{netlist,
                       routing,
                       EDANetNode::create(source->ref, u"1"_s),
                       EDANetNode::create(destination->ref, u"1"_s),
                       PinNames(netlist),
                       {},
                       switching};
    report.tracedPaths = routing.findTracedPathsBetween(source, u"1"_s, destination, u"1"_s);
    return report;
}

bool closes(const ContactPosition &position, const TracedStep &step)
{
    return std::any_of(position.closed.cbegin(), position.closed.cend(), [&](const Contact &contact) {
        return (contact.pin == step.entryPin && contact.otherPin == step.exitPin) ||
               (contact.pin == step.exitPin && contact.otherPin == step.entryPin);
    });
}

/// Whether the relays of each gang have a position in which all of them close what the way needs.
bool isMadeBySomeState(const TracedPath &way, const RelayContactMap &relays)
{
    QMap<int, QList<bool>> isPossible; // by gang, then by position
    for (const TracedStep &step : way.steps) {
        if (!relays.contains(step.component->ref))
            continue;
        const RelayContacts &relay = relays[step.component->ref];
        QList<bool> &positions = isPossible[relay.gang];
        if (positions.isEmpty())
            positions.fill(true, relay.positions.size());
        for (qsizetype i = 0; i < positions.size(); ++i)
            positions[i] = positions.at(i) && closes(relay.positions.at(i), step);
    }
    return std::all_of(isPossible.cbegin(), isPossible.cend(),
                       [](const QList<bool> &positions) { return positions.contains(true); });
}

/// All at rest but what the texts say, as "K1#1" or "K1#1=2".
std::vector<int> positionsBy(const QStringList &settings, const SwitchingModel &model)
{
    std::vector<int> positions(static_cast<std::size_t>(model.gangCount()), 0);
    for (const QString &setting : settings) {
        const int gang = model.gangOf(model.componentOf(drawnName(setting.section(u'=', 0, 0))));
        positions[static_cast<std::size_t>(gang)] = setting.contains(u'=') ? setting.section(u'=', 1).toInt() : 1;
    }
    return positions;
}

QJsonObject toJson(const std::vector<int> &positions, const SwitchingModel &model)
{
    QJsonObject result;
    for (int gang = 0; gang < model.gangCount(); ++gang) {
        const int position = positions[static_cast<std::size_t>(gang)];
        for (const QString &ref : position > 0 ? model.gang(gang).components : QStringList())
            result.insert(ref + u"#1"_s, position);
    }
    return result;
}

void coupleBy(const SwitchingModel &model, const StubProvider &netlist, PlainUnion &tied)
{
    for (const PassiveComponent &passive : model.passives()) {
        const auto pins = netlist.getPartByName(netlist.getComponentByRef(passive.ref)->part)->pins;
        for (const auto &pin : pins)
            tied.unite(passive.ref + u"/1"_s, passive.ref + u'/' + pin->number);
    }
}
}

class RouteRelaysTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void relaysSetAsToldConnectTheEnds()
    {
        int checked = 0;
        int atRest = 0;
        for (quint32 seed = 0; seed < 3000; ++seed) {
            QRandomGenerator random(seed);
            RandomRelays system(random);
            MultipleEDAProvider netlist({&system.netlist}, {});
            const RouteReport report = routesOf(netlist);
            const SwitchingModel model(system.netlist);
            for (const TracedPath &path : report.tracedPaths) {
                if (!relaysWith(RelayTask::Unknown, report, path).isEmpty())
                    continue;
                const auto positions = positionsBy(relaysWith(RelayTask::Set, report, path), model);
                QCOMPARE(positionsToJson(report, path), toJson(positions, model));
                PlainUnion tied = system.tiedBy(model, positions);
                coupleBy(model, system.netlist, tied);
                QVERIFY2(tied.number(u"U1/1"_s) == tied.number(u"J1/1"_s), qPrintable(QString::number(seed)));
                for (const QString &ref : relaysWith(RelayTask::StayAtRest, report, path))
                    QCOMPARE(positions[static_cast<std::size_t>(model.gangOf(model.componentOf(drawnName(ref))))], 0);
                atRest += relaysWith(RelayTask::StayAtRest, report, path).isEmpty() ? 0 : 1;
                ++checked;
            }
        }
        QVERIFY(checked > 2000 && atRest > 500);
    }

    void countsWaysThatAreLeftOut()
    {
        qsizetype leftOut = 0;
        for (quint32 seed = 0; seed < 1000; ++seed) {
            QRandomGenerator random(seed);
            RandomRelays system(random);
            MultipleEDAProvider netlist({&system.netlist}, {});
            RouteReport report = routesOf(netlist);
            const RouteEnd source{netlist.getComponentByRef(u"U1#1"_s), report.source};
            const RouteEnd destination{netlist.getComponentByRef(u"J1#1"_s), report.destination};
            const auto ways =
                Routing(&netlist).findTracedPathsBetween(source.component, u"1"_s, destination.component, u"1"_s);
            QCOMPARE(leftOutWays(source, destination, report), ways.size() - report.routeCount());

            const auto contacts = report.switching->relayContacts();
            const auto routes = std::exchange(report.tracedPaths, {});
            report.areThereMore = true;
            qsizetype expected = 0;
            for (qsizetype bound = 1; bound < std::min<qsizetype>(routes.size(), 20); ++bound) {
                report.tracedPaths.append(routes.at(bound - 1));
                expected += isMadeBySomeState(ways.at(bound - 1), *contacts) ? 0 : 1;
                QCOMPARE(leftOutWays(source, destination, report), expected);
                leftOut += expected;
            }
        }
        QVERIFY(leftOut > 1000);
    }
};

VELK_TEST(RouteRelaysTest)

#include "RouteRelaysTest.moc"
