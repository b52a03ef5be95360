#include "tests/support/PlainProvider.h"
#include "tests/support/RandomContacts.h"
#include "tests/support/RandomSystems.h"
#include "tests/support/SystemCount.h"
#include "tests/support/TestRegistry.h"
#include "tests/support/TextTable.h"

#include <velk/naming/References.h>
#include <velk/provider/MultipleEDAProvider.h>
#include <velk/routing/Routing.h>

#include <QSet>
#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace {

constexpr int any = std::numeric_limits<int>::max() - 1;

/// A search on random boards, with limits of which many are too low.
class RandomSearch
{
public:
    explicit RandomSearch(quint32 seed, bool hasContacts = false)
        : random(seed)
        , boards(randomBoards(random))
        , netlist({boards[0].get(), boards[1].get()}, {u"Connector"_s})
        , plain(netlist)
        , routing(&netlist)
        , source(netlist.getComponentByRef(u"U1#1"_s))
        , destination(netlist.getComponentByRef(random.bounded(2) == 0 ? u"D1#1"_s : u"D1#2"_s))
        , maxSwitches(random.bounded(20) == 0 ? any + 1 : random.bounded(-2, 4))
        , maxNodes(random.bounded(-2, 3))
    {
        if (hasContacts)
            routing.setRelayContacts(randomContacts(netlist, random));
        routing.setMaxSwitchingComponentsPerPath(maxSwitches);
        routing.setMaxAdditionalNodesPerPath(maxNodes);
    }

    NoPathReason reason() const { return routing.explainNoPathBetween(source, u"1"_s, destination, u"1"_s); }

    /// From a provider without numbers of its own.
    NoPathReason reasonOnAnyProvider()
    {
        Routing other(&plain);
        other.setRelayContacts(routing.relayContacts());
        other.setMaxSwitchingComponentsPerPath(maxSwitches);
        other.setMaxAdditionalNodesPerPath(maxNodes);
        return other.explainNoPathBetween(source, u"1"_s, destination, u"1"_s);
    }

    /// All routes within these limits, by the search that knows no bounds.
    QList<TracedPath> routes(int switches, int nodes) { return routes(switches, nodes, routing.relayContacts()); }
    QList<TracedPath> routesAsDrawn(int switches, int nodes) { return routes(switches, nodes, {}); }

private:
    QList<TracedPath> routes(int switches, int nodes, const RelayContactsPointer &contacts)
    {
        Routing unbounded(&plain);
        unbounded.setRelayContacts(contacts);
        unbounded.setMaxSwitchingComponentsPerPath(switches);
        unbounded.setMaxAdditionalNodesPerPath(nodes);
        return unbounded.findTracedPathsBetween(source, u"1"_s, destination, u"1"_s);
    }

    QRandomGenerator random;
    const std::vector<std::unique_ptr<StubProvider>> boards;

public:
    MultipleEDAProvider netlist;
    PlainProvider plain;
    Routing routing;
    const QSharedPointer<EDAComponent> source;
    const QSharedPointer<EDAComponent> destination;
    const int maxSwitches;
    const int maxNodes;
};

QStringList namesOf(const PathReach &reach)
{
    QStringList names;
    for (const auto &net : reach.nets)
        names.append(net->name);
    return names;
}
}

class NoPathReasonTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void exclusionsInTheWay()
    {
        int inTheWay = 0;
        int elsewhere = 0;
        const int systems = systemCount(800);
        for (int seed = 0; seed < systems; ++seed) {
            RandomSearch random(static_cast<quint32>(seed), seed % 2 == 0);
            const auto all = random.routes(random.maxSwitches, random.maxNodes);
            const auto nets = random.netlist.getNets();
            const QStringList refs{u"K1#1"_s, u"K%1#%2"_s.arg(seed % 5).arg(1 + seed % 2)};
            const QString name = nets.at(seed % nets.size())->name;
            random.routing.setExcludedComponents(refs);
            random.routing.setExcludedNets({name});
            if (!random.routing.findTracedPathsBetween(random.source, u"1"_s, random.destination, u"1"_s).isEmpty())
                continue;
            const QByteArray place = "seed " + QByteArray::number(seed);
            const auto reason = random.reason();
            QVERIFY2(reason.pathWithoutExclusions.has_value() == !all.isEmpty(), place);
            if (all.isEmpty()) {
                ++elsewhere;
                continue;
            }
            QVERIFY2(netsOf(*reason.pathWithoutExclusions) == netsOf(all.first()), place);
            QStringList crossed;
            for (const TracedStep &step : all.first().steps) {
                if (refs.contains(step.component->ref) && !crossed.contains(step.component->ref))
                    crossed.append(step.component->ref);
            }
            QCOMPARE(refsOf(reason.excludedComponents), crossed);
            const auto entered = netsOf(all.first());
            const auto isEntered = std::count_if(entered.cbegin(), entered.cend(),
                                                 [&name](const EDANet *net) { return net->name == name; });
            QVERIFY2(reason.excludedNets.size() == isEntered, place);
            QVERIFY2(isEntered == 0 || reason.excludedNets.first()->name == name, place);
            ++inTheWay;
        }
        QVERIFY(inTheWay > systems / 10 && elsewhere > systems / 10);
    }

    void agreesWithTheSearch_data()
    {
        QTest::addColumn<bool>("hasContacts");
        QTest::newRow("as drawn") << false;
        QTest::newRow("realizable") << true;
    }
    void agreesWithTheSearch()
    {
        QFETCH(bool, hasContacts);
        int unconnected = 0;
        int unrealizable = 0;
        QMap<QString, int> counts; // of what was found to help
        const int systems = systemCount(1500);
        for (int seed = 0; seed < systems; ++seed) {
            RandomSearch random(static_cast<quint32>(seed), hasContacts);
            if (!random.routes(random.maxSwitches, random.maxNodes).isEmpty())
                continue;
            const QByteArray place = "seed " + QByteArray::number(seed);
            const auto reason = random.reason();
            const auto other = seed % 10 == 0 ? random.reasonOnAnyProvider() : reason;
            QVERIFY2(other.shortest == reason.shortest && namesOf(other.fromSource) == namesOf(reason.fromSource) &&
                         other.sufficientLimits.size() == reason.sufficientLimits.size(),
                     place);
            QVERIFY2(reason.isComplete && reason.isConnected == !random.routesAsDrawn(any, any).isEmpty(), place);
            if (!*reason.isConnected) {
                ++unconnected;
                continue;
            }
            QVERIFY2(!hasContacts || reason.isRealizable == !random.routes(any, any).isEmpty(), place);
            QVERIFY2(isRight(random, reason), place);
            if (reason.isRealizable == false) {
                ++unrealizable;
                continue;
            }
            QStringList expected;
            if (!random.routes(any, random.maxNodes).isEmpty())
                expected.append(u"switches"_s);
            if (!random.routes(random.maxSwitches, any).isEmpty())
                expected.append(u"nodes"_s);
            if (expected.isEmpty())
                expected.append(u"both"_s);
            QStringList found;
            for (const SufficientLimits &limits : reason.sufficientLimits) {
                found.append(verified(random, limits));
                ++counts[found.last()];
            }
            QVERIFY2(found == expected, place + ": " + found.join(u' ').toUtf8());
        }
        const int many = systems / 15;
        QVERIFY(unconnected > many && hasContacts == (unrealizable > many));
        QVERIFY(counts[u"switches"_s] > many && counts[u"nodes"_s] > many && counts[u"both"_s] > many / 10);
    }

    void tellsWhyNoStateMakesAPath_data() { addCasesFrom("conflict_cases.txt"); }
    void tellsWhyNoStateMakesAPath()
    {
        QFETCH(QString, input);
        const auto netlist = systemOf(input.section(u"\n--"_s, 0, 0));
        Routing routing(netlist.get());
        routing.setMaxSwitchingComponentsPerPath(0);
        routing.setMaxAdditionalNodesPerPath(0);
        routing.setRelayContacts(contactsOf(input.section(u"\n--"_s, 1)));
        const auto reason = routing.explainNoPath({{u"Id"_s, u"U1"_s}}, u"1"_s, {{u"Id"_s, u"D1"_s}}, u"1"_s);
        QTEST(realizableText(reason).trimmed(), "expected");
    }

    // All of the ways over thirty nets fail at their end only.
    void givesUp()
    {
        QString text = u"U1 Source 1\nD1 DUT 1\nK1 Relay 1,2\nK2 Relay 1,2\nA: U1/1 K1/1\nB: D1/1 K2/2"_s;
        QStringList nodes(30, u":"_s);
        nodes.first() += u" K1/2"_s;
        nodes.last() += u" K2/1"_s;
        for (int i = 0; i < 30; ++i) {
            for (int other = 0; other < i; ++other) {
                const QString ref = u"R%1_%2"_s.arg(i).arg(other);
                text += u"\n%1 Resistor 1,2"_s.arg(ref);
                nodes[i] += u' ' + ref + u"/1"_s;
                nodes[other] += u' ' + ref + u"/2"_s;
            }
        }
        for (int i = 0; i < 30; ++i)
            text += u"\nN%1"_s.arg(i) + nodes.at(i);
        const auto netlist = systemOf(text);
        Routing routing(netlist.get());
        routing.setRelayContacts(contactsOf(u"K1 1 /1-2\nK2 1 1-2/"_s));
        routing.setMaxSwitchingComponentsPerPath(2);
        const auto reason = routing.explainNoPath({{u"Id"_s, u"U1"_s}}, u"1"_s, {{u"Id"_s, u"D1"_s}}, u"1"_s);
        QVERIFY(reason.isComplete);
        QCOMPARE(realizableText(reason), u"?; ; B < K2/1/2=0 K1/1/2=1 < A"_s);
    }

    // Called off after any number of questions, it tells what is true.
    void tellsWhatIsKnownWhenCalledOff()
    {
        const auto system = systemOf(u"U1 Source 1\nD1 DUT 1\nD2 DUT 1\nK1 Relay 1,2\nK2 Relay 1,2\n"
                                     "A: U1/1 K1/1\nB: K1/2 K2/1\nC: K2/2 D1/1\nD: D2/1"_s);
        Routing routing(system.get());
        routing.setMaxSwitchingComponentsPerPath(0);
        for (const QString &destination : {u"D1"_s, u"D2"_s, u"D1"_s}) {
            int incomplete = 0;
            bool isComplete = false;
            for (int questions = 0; !isComplete; ++questions) {
                routing.setInterruption([left = questions]() mutable { return left-- == 0; });
                const auto reason = routing.explainNoPathBetween(system->getComponentByRef(u"U1"_s), u"1"_s,
                                                                 system->getComponentByRef(destination), u"1"_s);
                isComplete = reason.isComplete;
                incomplete += reason.isComplete ? 0 : 1;
                QVERIFY(!reason.isConnected || *reason.isConnected == (destination == u"D1"_s));
                QVERIFY(reason.isConnected || !isComplete);
                QCOMPARE(reason.shortest, reason.isConnected == true ? 2 : -1);
                QCOMPARE(reason.sufficientLimits.size(), isComplete && reason.isConnected == true ? 1 : 0);
            }
            QVERIFY(incomplete > 2);
            routing.setRelayContacts(contactsOf(u"K1 1 /1-2"_s));
        }
        routing.setInterruption({});
        routing.setMaxAdditionalNodesPerPath(any + 1); // there is no larger limit to look for
        QCOMPARE(routing.explainNoPath({{u"Id"_s, u"U1"_s}}, u"1"_s, {{u"Id"_s, u"K1"_s}}, u"2"_s).shortest, 1);
    }

    // On systems where each node is a pin of its own; the search has its rules for others.
    void reachAgreesWithTheSearch()
    {
        int reached = 0;
        QMap<qsizetype, int> counts; // by the number of components between the ends
        const int systems = systemCount(9000);
        for (int seed = 0; seed < systems; ++seed) {
            RandomSearch random(static_cast<quint32>(seed));
            const auto reason = random.reason();
            if (hasOddNodes(random.netlist) || *reason.isConnected)
                continue;
            const QByteArray place = "seed " + QByteArray::number(seed);
            QStringList nets = namesOf(reason.fromSource);
            nets.sort();
            const QStringList expected = netsReached(random);
            QVERIFY2(nets == expected, place + ": " + nets.join(u' ').toUtf8());
            reached += nets.size() > 1 ? 1 : 0;
            QStringList between = refsOf(reason.between);
            between.sort();
            QVERIFY2(between == fusesBetween(random), place + ": " + between.join(u' ').toUtf8());
            ++counts[between.size()];
        }
        const int many = systems / 90;
        QVERIFY(reached > many && counts[0] > many && counts[1] > many / 3 && counts[2] > 0);
    }

    void reachEndsAtConnectors()
    {
        const auto boards = systemsOf(u"U1 Source 1\nK1 Relay 1,2\nX1 Connector 1,2 X1\nX2 Connector 1,2 X2\n"
                                      "A: U1/1 K1/1 X1/1 X1/2\nB: K1/2 X2/1\n"
                                      "later: K1/2\n" // to which no route leads
                                      "--\n"
                                      "X1 connector 1,2 X1\nX2 Connector 1,2 x2\nC1 - 1,2\nC2 Fuse 1,2\nD1 DUT 1,2,3\n"
                                      "C: X1/1 C1/1\nD: C1/2 C2/1\nE: C2/2 X2/1 D1/1\nF: D1/2"_s);
        boards[1]->getComponentByRef(u"C1"_s)->properties.remove(EDAComponent::TYPE);
        MultipleEDAProvider joined({boards[0].get(), boards[1].get()}, {u"Connector"_s});
        Routing routing(&joined);
        routing.setComponentTypesThatAreSwitchable({u"relay"_s});
        const auto reached = [&](const QString &source, const QString &destination) {
            const auto reason = routing.explainNoPathBetween(
                joined.getComponentByRef(source.section(u'/', 0, 0)), source.section(u'/', 1),
                joined.getComponentByRef(destination.section(u'/', 0, 0)), destination.section(u'/', 1));
            return textOf(reason.fromSource) + u"; "_s + textOf(reason.fromDestination) + u"; "_s +
                   refsOf(reason.between).join(u' ');
        };
        const QString all = u"A#1+C#2 B#1, open X1#1.2 X2#1.1"_s;
        QCOMPARE(reached(u"U1#1/1"_s, u"D1#2/1"_s), all + u"; E#2, open X2#2.1; C1#2 C2#2"_s);
        QCOMPARE(reached(u"U1#1/1"_s, u"D1#2/2"_s), all + u"; F#2, open , alone; "_s);
        QCOMPARE(reached(u"U1#1/1"_s, u"D1#2/3"_s), all + u"; , open , alone; "_s);
        // The second end alone may be reached by crossing its component.
        QCOMPARE(reached(u"K1#1/1"_s, u"D1#2/2"_s), u"A#1+C#2, open X1#1.2; F#2, open , alone; "_s);
        QCOMPARE(reached(u"D1#2/2"_s, u"K1#1/1"_s), u"F#2, open , alone; "_s + all + u"; "_s);
        routing.setComponentTypesThatAreConnectors({u"Fuse"_s});
        QCOMPARE(reached(u"U1#1/1"_s, u"D1#2/2"_s), u"A#1+C#2 B#1, open ; F#2, open , alone; "_s);
    }

private:
    /// "no; 3/4; B < K2/1/2=0 K1/1/2=1 < A".
    static QString realizableText(const NoPathReason &reason)
    {
        QStringList limits;
        for (const SufficientLimits &found : reason.sufficientLimits)
            limits.append(u"%1/%2"_s.arg(found.maxSwitchingComponents).arg(found.maxAdditionalNodes));
        QString conflict;
        if (reason.conflict) {
            conflict = u" < "_s + reason.conflict->path.steps.first().net->name;
            for (const TracedStep &step : reason.conflict->steps) {
                const QString position = step.position < 0 ? QString() : u"=%1"_s.arg(step.position);
                conflict.prepend(u" %1/%2/%3%4"_s.arg(step.component->ref, step.entryPin, step.exitPin, position));
            }
            conflict.prepend(reason.conflict->path.lastNet->name + u" <"_s);
        }
        const QString realizable = !reason.isRealizable ? u"?"_s : *reason.isRealizable ? u"yes"_s : u"no"_s;
        return u"%1; %2; %3"_s.arg(realizable, limits.join(u' '), conflict);
    }

    static QString textOf(const PathReach &reach)
    {
        QStringList pins;
        for (const auto &node : reach.unpluggedPins)
            pins.append(node->ref + u'.' + node->pin);
        return u"%1, open %2%3"_s.arg(namesOf(reach).join(u' '), pins.join(u' '),
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
    static QStringList netsReached(const RandomSearch &search)
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
                       !routing.findPathsBetween(search.source, u"1"_s, component, node->pin).isEmpty();
            };
            if (std::any_of(net->nodes.cbegin(), net->nodes.cend(), isReached))
                result.append(net->name);
        }
        result.sort();
        return result;
    }

    /// Those on routes with the fewest fuses, if fuses could be switched.
    static QStringList fusesBetween(const RandomSearch &search)
    {
        Routing routing = search.routing;
        routing.setComponentTypesThatAreSwitchable({u"Relay"_s, u"Resistor"_s, u"Fuse"_s});
        routing.setMaxSwitchingComponentsPerPath(any);
        routing.setMaxAdditionalNodesPerPath(any);
        QStringList result;
        qsizetype fewest = std::numeric_limits<qsizetype>::max();
        for (const auto &path : routing.findPathsBetween(search.source, u"1"_s, search.destination, u"1"_s)) {
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

    /// Whether the conflict is of the first way as drawn, and between steps of it that no position makes.
    static bool isRight(RandomSearch &random, const NoPathReason &reason)
    {
        const auto ways = random.routesAsDrawn(random.maxSwitches, random.maxNodes);
        if (!reason.conflict)
            return ways.isEmpty();
        const auto &[path, steps] = *reason.conflict;
        const auto relays = *random.routing.relayContacts();
        const int gang = relays[steps.first().component->ref].gang;
        int before = -1;
        for (const TracedStep &step : steps) {
            const auto isStep = [&](const TracedStep &other) {
                return other.net == step.net && other.component == step.component && other.entryPin == step.entryPin &&
                       other.exitPin == step.exitPin;
            };
            const auto found = std::find_if(path.steps.cbegin() + before + 1, path.steps.cend(), isStep);
            if (found == path.steps.cend() || relays[step.component->ref].gang != gang ||
                step.position != lowestPosition({step}, relays, random.netlist))
                return false;
            before = static_cast<int>(found - path.steps.cbegin());
        }
        const bool isOne = steps.size() == 1;
        return lowestPosition(steps, relays, random.netlist) < 0 && isOne == (steps.first().position < 0) &&
               (ways.isEmpty() || netsOf(ways.first()) == netsOf(path));
    }

    static QList<const EDANet *> netsOf(const TracedPath &path)
    {
        QList<const EDANet *> nets{path.lastNet.data()};
        for (const TracedStep &step : path.steps)
            nets.append(step.net.data());
        return nets;
    }

    /// Which limits were widened; another text where there is no such route or a lower limit would do.
    static QString verified(RandomSearch &random, const SufficientLimits &limits)
    {
        const int switches = limits.maxSwitchingComponents;
        const int nodes = limits.maxAdditionalNodes;
        const auto routes = random.routes(switches, nodes);
        if (routes.isEmpty() || routes.first().steps.size() != limits.switchingComponents ||
            routes.first().additionalNodes.size() != limits.additionalNodes)
            return u"no such route"_s;
        const bool moreSwitches = switches != random.maxSwitches;
        const bool moreNodes = nodes != random.maxNodes;
        if ((moreSwitches && !random.routes(switches - 1, nodes).isEmpty()) ||
            (moreNodes && !random.routes(switches, nodes - 1).isEmpty()))
            return u"not the least"_s;
        if (moreSwitches && moreNodes)
            return random.routes(switches - 1, any).isEmpty() ? u"both"_s : u"not the fewest switches"_s;
        return moreSwitches ? u"switches"_s : u"nodes"_s;
    }
};

VELK_TEST(NoPathReasonTest)

#include "NoPathReasonTest.moc"
