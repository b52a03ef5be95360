#include "tests/support/Boards.h"
#include "tests/support/NetlistText.h"
#include "tests/support/Process.h"
#include "tests/support/RandomRelays.h"
#include "tests/support/RandomSystems.h"
#include "tests/support/TestRegistry.h"

#include <velk/check/SystemCheck.h>
#include <velk/facade/VelkSystem.h>
#include <velk/kicad/KiCadNetlistFile.h>
#include <velk/naming/PinSearch.h>
#include <velk/provider/MultipleEDAProvider.h>
#include <velk/routing/Routing.h>

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>
#include <thread>

using namespace Qt::StringLiterals;
using namespace Velk;

static_assert(std::is_base_of_v<std::exception, VelkSystemException>);

namespace {

QString qt(const std::string &text)
{
    return QString::fromStdString(text);
}

const VelkRouteEnd source{{{"CompType", "Source"}}, "1"};
const VelkRouteEnd relay{{{"CompType", "relay"}}, "A"}; // a pin that not every relay has
const VelkRouteEnd dut{{{"Side", "2"}}, "1"};

/// "N0#1 1 K1#1=0 2 N3#1 | N3#1:J1#1.1": the steps with their positions and the last net, then the side connections.
QString describe(const VelkRoute &route)
{
    QStringList words;
    for (const auto &step : route.steps) {
        const QString position = step.position ? u"=%1"_s.arg(*step.position) : QString();
        words += {qt(step.net), qt(step.pinIn.number), qt(step.component) + position, qt(step.pinOut.number)};
    }
    words += {qt(route.lastNet), u"|"_s};
    for (const auto &side : route.sideConnections)
        words.append(u"%1:%2.%3"_s.arg(qt(side.net), qt(side.component), qt(side.pin.number)));
    return words.join(u' ');
}

QString describe(const TracedPath &path)
{
    QStringList words;
    for (const auto &step : path.steps) {
        const QString position =
            step.position == TracedStep::asDrawn ? QString() : u"=%1"_s.arg(QString::number(step.position));
        words += {step.net->name, step.entryPin, step.component->ref + position, step.exitPin};
    }
    words += {path.lastNet->name, u"|"_s};
    for (const auto &additional : path.additionalNodes)
        words.append(u"%1:%2.%3"_s.arg(additional.net->name, additional.node->ref, additional.node->pin));
    return words.join(u' ');
}

VelkSystemOptions tolerantly()
{
    VelkSystemOptions options;
    options.readingMode = VelkReadingMode::Tolerant;
    return options;
}

/// What \a query returns, or the message of what it throws.
template <typename Query>
QStringList answer(Query query)
try {
    return query();
} catch (const EDAException &exception) {
    return {exception.message()};
} catch (const VelkSystemException &exception) {
    return {qt(exception.message())};
}

template <typename Routes, typename Describe>
QStringList texts(const Routes &routes, Describe text)
{
    QStringList result;
    for (const auto &route : routes)
        result.append(text(route));
    return result;
}
}

class VelkSystemTest : public QObject
{
    Q_OBJECT
    using Action = std::function<void(const VelkSystem &)>;
    using Kind = VelkSystemException::Kind;

private Q_SLOTS:
    void agreesWithRoutingOnRandomSystems()
    {
        int found = 0;
        for (quint32 seed = 0; seed < 300; ++seed) {
            QRandomGenerator random(seed);
            const std::vector<std::string> names = write(randomBoards(random));
            const VelkSystem system(names, tolerantly()); // some components have no part
            QList<KiCadNetlistFile> files;
            for (const auto &name : names)
                files.append(KiCadNetlistFile(qt(name), KiCadReadingMode::Tolerant));
            MultipleEDAProvider joined({files[0].netlist().get(), files[1].netlist().get()}, {u"Connector"_s});
            Routing routing(&joined);
            VelkSearchOptions search;
            search.maxRoutes = seed % 3;
            search.asDrawn = seed % 4 < 2;
            routing.setMaxPaths(seed % 3);
            if (!search.asDrawn)
                routing.setRelayContacts(SwitchingModel(joined).relayContacts());
            const QStringList routes = answer([&] {
                return texts(system.routes(seed % 2 == 0 ? source : relay, dut, search),
                             [](const VelkRoute &route) { return describe(route); });
            });
            const QStringList expected = answer([&] {
                const QString type = seed % 2 == 0 ? u"Source"_s : u"relay"_s;
                const auto from = findPin(joined, {{{u"CompType"_s, type}}, {}, seed % 2 == 0 ? u"1"_s : u"A"_s});
                const auto to = joined.getComponentByProperties({{u"Side"_s, u"2"_s}});
                return texts(routing.findTracedPathsBetween(from.component, from.pin->number, to, u"1"_s),
                             [](const TracedPath &path) { return describe(path); });
            });
            const QString place = u"seed %1"_s.arg(seed);
            QVERIFY2(routes == expected, qPrintable(place));
            if (routes.isEmpty()) {
                const auto reason = system.whyNoRoute(seed % 2 == 0 ? source : relay, dut, search);
                const bool isPossible = *reason.isConnected && reason.isRealizable.value_or(search.asDrawn);
                QVERIFY2(reason.isComplete && isPossible == !reason.sufficientLimits.empty(), qPrintable(place));
            }
            found += static_cast<int>(routes.size());
        }
        QVERIFY(found > 100);
    }

    void statesConnectTheEndsOfRoutes()
    {
        int direct = 0;
        int coupled = 0;
        for (quint32 seed = 0; seed < 300; ++seed) {
            QRandomGenerator random(seed);
            RandomRelays relays(random);
            const MultipleEDAProvider joined({&relays.netlist}, {});
            const SwitchingModel model(joined);
            const VelkSystem system({write(relays.netlist, u"relays.net"_s)});
            if (model.netOf(u"U1#1"_s, u"1"_s) == model.netOf(u"J1#1"_s, u"1"_s) ||
                model.role(model.componentOf(u"U1#1"_s)) != SwitchingRole::Interface ||
                model.role(model.componentOf(u"J1#1"_s)) != SwitchingRole::Interface)
                continue;
            for (const auto &route : system.routes({{}, "1", "U1"}, {{}, "1", "J1"})) {
                const auto isUnknown = [](const VelkRouteStep &step) { return step.isUnknown; };
                if (std::any_of(route.steps.begin(), route.steps.end(), isUnknown))
                    continue;
                const auto connections = system.connected(route.state());
                const bool needsCoupling =
                    route.state().size() < route.steps.size() && !holdEnds(connections.connected);
                const auto holdsEnds = [](const VelkCoupling &coupling) { return holdEnds(united(coupling.sets)); };
                QVERIFY2(needsCoupling
                             ? std::any_of(connections.couplings.begin(), connections.couplings.end(), holdsEnds)
                             : holdEnds(connections.connected),
                         qPrintable(u"seed %1: %2"_s.arg(QString::number(seed), describe(route))));
                ++(needsCoupling ? coupled : direct);
            }
        }
        QVERIFY2(direct > 100 && coupled > 100, qPrintable(u"%1, %2"_s.arg(direct).arg(coupled)));
    }

    void tellsWhatRelaysDo()
    {
        const VelkSystem system({write(u"U1 [1=HI] CompType=Source\nU2 [1] CompType=Source\nJ1 [1=IN] CompType=DUT\n"
                                       "J2 [1] CompType=DUT\nK1 [11 12 14 A1 A2] CompType=Relay, Gang=K\n"
                                       "K2 [C 1 2] CompType=Relay, Positions=/~low:~C-1~/~C-2\n"
                                       "K3 [1 2 3] CompType=Relay\nK4 [1 2] CompType=Relay, Gang=K\n"
                                       "R1 [1 2] CompType=Resistor\nA: U1/1 K1/11\nB: K1/12 K2/C\nC: K2/2 J1/1 R1/2\n"
                                       "D: K1/14 K3/1\nE: K3/2 R1/1 U2/1\nF: K2/1 J2/1"_s)});
        const VelkRouteEnd from{{}, "HI", "U1"};
        const auto routes = system.routes(from, {{}, "IN", "J1"});
        QCOMPARE(texts(routes, [](const VelkRoute &route) { return describe(route); }),
                 (QStringList{u"A#1 11 K1#1=0 12 B#1 C K2#1=2 2 C#1 |"_s,
                              u"A#1 11 K1#1=1 14 D#1 1 K3#1 2 E#1 1 R1#1 2 C#1 | E#1:U2#1.1"_s}));
        QCOMPARE(routes[0].switches(), std::vector<std::string>{"K2#1"});
        QCOMPARE(routes[0].resting(), std::vector<std::string>{"K1#1"});
        QVERIFY(routes[0].state() == (std::map<std::string, int>{{"K1#1", 0}, {"K2#1", 2}}));
        QCOMPARE(routes[1].switches(), (std::vector<std::string>{"K1#1", "K3#1", "R1#1"}));
        QVERIFY(!routes[1].steps[0].isUnknown && routes[1].steps[1].isUnknown && !routes[1].steps[2].isUnknown);
        const auto low = system.routes(from, {{}, "1", "J2"});
        QCOMPARE(low.at(0).steps[1].positionName, std::string("low"));
        VelkSearchOptions asDrawn;
        asDrawn.asDrawn = true;
        const auto drawn = system.routes(from, {{}, "IN", "J1"}, asDrawn);
        QCOMPARE(drawn.at(0).switches(), (std::vector<std::string>{"K1#1", "K2#1"}));
        QVERIFY(drawn[0].resting().empty() && drawn[0].state().empty() && !drawn[1].steps[1].isUnknown);

        QVERIFY(system.positions("K2") ==
                (VelkRelayPositions{
                    VelkPositionsRule::Field, {{"", {}}, {"low", {{"C", "1"}}}, {"", {{"C", "2"}}}}, {"K2#1"}, false}));
        QVERIFY(system.positions("K1").rule == VelkPositionsRule::ContactNumbers);
        QCOMPARE(system.positions("K4#1").gang, (std::vector<std::string>{"K1#1", "K4#1"}));
        QVERIFY(system.positions("K3") == (VelkRelayPositions{VelkPositionsRule::Unknown, {}, {"K3#1"}, true}));
        QVERIFY(system.positions("R1") == (VelkRelayPositions{VelkPositionsRule::NoContacts, {}, {}, false}));
        QCOMPARE(system.unknownRelays(), std::vector<std::string>{"K3#1"});
        QVERIFY(system.positionErrors().empty());

        const VelkNodeInfo hi{"U1#1", {"1", "HI", ""}};
        const VelkNodeInfo in{"J1#1", {"1", "IN", ""}};
        const VelkNodeInfo other{"U2#1", {"1", "", ""}};
        QVERIFY(system.connected({}) == (VelkConnections{{}, {{{{in}, {other}}, {"R1#1"}}}}));
        QVERIFY(system.connected({{"K2", 2}}) == (VelkConnections{{{in, hi}}, {{{{in, hi}, {other}}, {"R1#1"}}}}));
        QVERIFY(system.connected({{"K2", 2}, {"K4", 1}, {"K1", 1}}).connected.empty());
    }

    void tellsWhoReachesWhom()
    {
        const VelkSystem system({write(u"U1 [1=HI 2] CompType=Source, Dev=DMM\nU2 [1] CompType=source\n"
                                       "J1 [1 2] CompType=DUT\nK1 [1 2] CompType=Relay\nK2 [1 2] CompType=Relay\n"
                                       "A: U1/1 K1/1\nB: K1/2 K2/1 U2/1\nC: K2/2 J1/1\nD: J1/2"_s)});
        const VelkNodeInfo hi{"U1#1", {"1", "HI", ""}};
        const VelkNodeInfo other{"U2#1", {"1", "", ""}};
        const VelkNodeInfo in{"J1#1", {"1", "", ""}};
        const VelkNodeInfo free{"J1#1", {"2", "", ""}};
        QVERIFY(system.coverage() == (VelkCoverage{{hi, other}, {in, free}, {{2, {}}, {1, {}}}, {}}));

        VelkCoverageOptions options;
        options.withCritical = true;
        std::vector<std::pair<std::size_t, std::size_t>> progress;
        options.onProgress = [&](std::size_t done, std::size_t all) { progress.emplace_back(done, all); };
        const auto critical = system.coverage(options).critical;
        QVERIFY(critical == (std::vector<VelkCriticalComponent>{{"K2#1", {{0, 0}, {1, 0}}}, {"K1#1", {{0, 0}}}}));
        QVERIFY(progress == (std::vector<std::pair<std::size_t, std::size_t>>{{1, 2}, {2, 2}}));

        options.withCritical = false;
        options.sourceProperties = {{"CompType", "DUT"}};
        options.dutProperties = {{"CompType", "Source"}, {"Dev", "DMM"}};
        QVERIFY(system.coverage(options) == (VelkCoverage{{in, free}, {hi}, {{2}, {{}}}, {}}));
        options.search.maxConnections = 0;
        QVERIFY(system.coverage(options).switches == (std::vector<std::vector<std::optional<int>>>{{{}}, {{}}}));
        options.dutProperties = {{"Dev", "DMM"}};
        QVERIFY(system.coverage(options).duts.empty());
        options.search.isCalledOff = [] { return true; };
        options.dutProperties.clear();
        QVERIFY_THROWS_EXCEPTION(VelkSystemException, system.coverage(options));
    }

    void tellsThatNoStateMakesARoute()
    {
        const VelkSystem system({write(u"U1 [1] CompType=Source\nJ1 [1] CompType=DUT\nK1 [11 12 14] CompType=Relay\n"
                                       "A: U1/1 K1/12\nB: K1/11\nC: J1/1 K1/14"_s)});
        const VelkRouteEnd from{{}, "1", "U1"};
        const VelkRouteEnd to{{}, "1", "J1"};
        QVERIFY(system.routes(from, to).empty());
        const auto reason = system.whyNoRoute(from, to);
        QVERIFY(reason.isConnected == true && reason.isRealizable == false && reason.sufficientLimits.empty());
        QVERIFY(reason.conflict);
        QCOMPARE(describe(reason.conflict->route), u"A#1 12 K1#1 14 C#1 |"_s);
        QVERIFY(reason.conflict->steps == reason.conflict->route.steps);
    }

    void takesTablesAndPassiveTypes()
    {
        const std::string table = folder.filePath(u"relays.csv"_s).toStdString();
        ::write(qt(table), QByteArray("part,positions\n*,1-2 /"));
        const std::string file = write(u"K1 [1 2 3] CompType=Relay\nF1 [1 2] CompType=Fuse"_s);
        VelkSystemOptions options;
        options.relayTables = {table};
        QVERIFY(VelkSystem({file}, options).positions("K1").rule == VelkPositionsRule::Table);
        QCOMPARE(VelkSystem({file}).unknownRelays(), std::vector<std::string>{"K1#1"});
        options.switchableTypes = {"Relay", "Fuse"};
        QVERIFY(!VelkSystem({file}, options).positions("F1").positions.empty());
        options.passiveTypes = {"fuse", "relay"};
        QVERIFY(VelkSystem({file}, options).positions("F1").positions.empty());
        QVERIFY(VelkSystem({file}, options).positions("K1").gang.empty());
        ::write(qt(table), QByteArray("part,positions\n*,1-4 /"));
        options.passiveTypes = {};
        QCOMPARE(VelkSystem({file}, options).check().at(0).code, std::string("positions-wrong"));
        options.relayTables = {qt(table).section(u'/', 0, -2).toStdString() + "/none.csv"};
        QVERIFY_THROWS_EXCEPTION(VelkSystemException, VelkSystem({file}, options));
        ::write(qt(table), QByteArray("part"));
        options.relayTables = {table};
        QVERIFY_THROWS_EXCEPTION(VelkSystemException, VelkSystem({file}, options));
    }

    void refusesPositions_data()
    {
        QTest::addColumn<Action>("action");
        QTest::addColumn<QString>("message");
        const auto add = [](const char *name, const QString &message, const Action &action) {
            QTest::newRow(name) << action << message;
        };
        add("unknown", u"K3#1 is no relay whose positions are known"_s, [](const VelkSystem &system) {
            system.connected({{"K3", 1}});
        });
        add("no relay", u"U1#1 is no relay whose positions are known"_s, [](const VelkSystem &system) {
            system.connected({{"U1", 0}});
        });
        add("too high", u"K1#1 has no position 2; there are 0 to 1"_s, [](const VelkSystem &system) {
            system.connected({{"K1", 2}});
        });
        add("negative", u"K1#1 has no position -1; there are 0 to 1"_s, [](const VelkSystem &system) {
            system.connected({{"K1", -1}});
        });
        add("of a gang", u"K2#1 is to take position 0, but its gang position 1"_s, [](const VelkSystem &system) {
            system.connected({{"K1", 1}, {"K2", 0}});
        });
    }
    void refusesPositions()
    {
        QFETCH(Action, action);
        const VelkSystem system({write(u"K1 [1 2] CompType=Relay, Gang=A\nK2 [1 2] CompType=Relay, Gang=A\n"
                                       "K3 [1 2 3] CompType=Relay\nU1 [1] CompType=Source"_s)});
        QTEST(answer([&] {
                  action(system);
                  return QStringList();
              }).join(u'\n'),
              "message");
    }

    void refusesWrongPositions()
    {
        const VelkSystem system({write(u"U1 [1] CompType=Source\nK1 [1 2] CompType=Relay, Positions=/~12\n"
                                       "K2 [1 2] CompType=Relay, Positions=1-2\nA: U1/1 K1/1 K2/1\nB: K1/2 K2/2"_s)});
        const VelkRouteEnd from{{}, "1", "U1"};
        const VelkRouteEnd to{{}, "2", "K1"};
        const QString first = u"K1#1: field Positions, column 3 of '/ 12': expected PIN-PIN, not '12'"_s;
        const QString second = u"K2#1: field Positions, column 4 of '1-2': expected '/' and another position"_s;
        QCOMPARE(system.positionErrors(), (std::vector<std::string>{first.toStdString(), second.toStdString()}));
        try {
            system.routes(from, to);
            QFAIL("nothing is thrown");
        } catch (const VelkSystemException &exception) {
            QCOMPARE(qt(exception.message()), first + u"; "_s + second);
            QVERIFY(exception.kind() == Kind::Positions);
        }
        QVERIFY_THROWS_EXCEPTION(VelkSystemException, system.whyNoRoute(from, to));
        QVERIFY_THROWS_EXCEPTION(VelkSystemException, system.connected({}));
        VelkSearchOptions asDrawn;
        asDrawn.asDrawn = true;
        QCOMPARE(system.routes(from, to, asDrawn).size(), std::size_t(2));
        QCOMPARE(system.positions("K1").rule, VelkPositionsRule::Unknown);
    }

    void answersThreadsAtOnce()
    {
        QRandomGenerator random(7);
        const auto boards = randomBoards(random);
        crowd(*boards[0], random);
        const VelkSystem system(write(boards), tolerantly());
        const auto ask = [&system] {
            return std::tuple(system.routes(source, {{{"Id", "D1"}}, "1"}), system.nets(), system.components(),
                              system.parts(), system.whyNoRoute(source, dut));
        };
        const auto expected = ask();
        std::atomic<int> equal = 0;
        std::vector<std::thread> threads;
        for (int i = 0; i < 4; ++i)
            threads.emplace_back([&] {
                for (int round = 0; round < 20; ++round)
                    equal += ask() == expected ? 1 : 0;
            });
        for (auto &thread : threads)
            thread.join();
        QCOMPARE(equal.load(), 80);
    }

    void takesTheFirstOfPinsOfOneNumber()
    {
        QFile file(folder.filePath(u"pins.net"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(
            R"((export (components (comp (ref "U1") (value "") (libsource (part "S")))) (libparts (libpart (part "S")
            (pins (pin (num "1") (name "A") (type "")) (pin (num "1") (name "B") (type "")))))
            (nets (net (name "N") (node (ref "U1") (pin "1"))))))");
        file.close();
        const VelkSystem system({file.fileName().toStdString()});
        QVERIFY(system.net("N") == (VelkNetInfo{"N#1", {{"U1#1", {"1", "A", ""}}}}));
    }

    void tellsWhatItHolds()
    {
        const VelkSystem system({twoRelays});
        const VelkSystem copy = system;
        QCOMPARE(copy.fileNames(), std::vector<std::string>{twoRelays});
        QCOMPARE(copy.components().size(), std::size_t(5));
        QCOMPARE(copy.components({{"CompType", "DUT"}}).size(), std::size_t(1));
        QVERIFY(copy.components({{"ref", "K1"}}) == std::vector{copy.component("K1#1")});
        QCOMPARE(copy.component("J2").value, std::string("Ω"));
        QVERIFY(copy.part("S") == (VelkPartInfo{"S#1", "", {{"1", "HI", "output"}}}));
        QVERIFY(copy.parts({{"ref", "U1"}}) == std::vector{copy.part("S#1")});
        QVERIFY(copy.net("A") ==
                (VelkNetInfo{"A#1", {{"U1#1", {"1", "HI", "output"}}, {"K1#1", {"1", "", "passive"}}}}));
        QCOMPARE(copy.nets({{"ref", "U1"}}).size(), std::size_t(1));
        QVERIFY(copy.pin({{{"CompType", "Source"}}, "HI"}) == (VelkNodeInfo{"U1#1", {"1", "HI", "output"}}));
        QVERIFY(copy.pin({{}, "2", "K1"}) == (VelkNodeInfo{"K1#1", {"2", "", "passive"}}));
        QVERIFY(copy.pins("U1") == (std::vector<VelkPlacedPin>{{{"1", "HI", "output"}, "A#1"}}));
        const auto routes = copy.routes({{}, "HI", "U1"}, {{}, "1", "J1"});
        QCOMPARE(routes.size(), std::size_t(1));
        QCOMPARE(describe(routes[0]), u"A#1 1 K1#1=1 2 B#1 1 K2#1=1 2 C#1 | B#1:J2#1.1"_s);
        VelkSearchOptions none;
        none.maxSwitches = 0;
        QVERIFY(copy.routes({{}, "HI", "U1"}, {{}, "1", "J1"}, none).empty());
        const auto reason = copy.whyNoRoute({{}, "HI", "U1"}, {{}, "1", "J1"}, none);
        QVERIFY(reason.shortest == std::size_t(2) &&
                reason.sufficientLimits == (std::vector<VelkSufficientLimits>{{1, 3, 2, 1}}));
        QCOMPARE(Routing(nullptr).maxSwitchingComponentsPerPath(), VelkSearchOptions().maxSwitches);
        QCOMPARE(Routing(nullptr).maxAdditionalNodesPerPath(), VelkSearchOptions().maxConnections);
    }

    void keepsOut()
    {
        VelkSystem system({twoRelays});
        const VelkSystem before = system;
        const VelkRouteEnd from{{}, "HI", "U1"};
        const VelkRouteEnd to{{}, "1", "J1"};
        system.setExcludedComponents({"Card=1"});
        QVERIFY(system.excludedComponents() == std::vector<std::string>{"K1#1"});
        QVERIFY(system.routes(from, to).empty());
        QVERIFY(system.coverage().switches == (std::vector<std::vector<std::optional<int>>>{{{}, {}}}));
        auto reason = system.whyNoRoute(from, to);
        QVERIFY(reason.isConnected == false && reason.excludedComponents == std::vector<std::string>{"K1#1"} &&
                reason.excludedNets.empty());
        QVERIFY(before.excludedComponents().empty());
        QCOMPARE(before.routes(from, to).size(), std::size_t(1));

        VelkSystem copy = system;
        copy.setExcludedComponents({});
        copy.setExcludedNets({"B"});
        QVERIFY_THROWS_EXCEPTION(VelkSystemException, copy.setExcludedComponents({"K2", "K9"}));
        QVERIFY_THROWS_EXCEPTION(VelkSystemException, copy.setExcludedNets({"Z"}));
        QVERIFY(copy.excludedNets() == std::vector<std::string>{"B#1"} && copy.excludedComponents().empty());
        reason = copy.whyNoRoute(from, to);
        QVERIFY(reason.excludedNets == std::vector<std::string>{"B#1"} && reason.excludedComponents.empty());
        QVERIFY(system.excludedNets().empty());
    }

    void crossesWhatIsRequired()
    {
        const VelkSystem system({twoRelays});
        VelkSearchOptions options;
        options.requiredComponents = {"K1", "K2#1"};
        const VelkRouteEnd from{{}, "HI", "U1"};
        QCOMPARE(system.routes(from, {{}, "1", "J1"}, options).size(), std::size_t(1));
        QVERIFY(system.routes(from, {{}, "1", "J2"}, options).empty());
        const auto reason = system.whyNoRoute(from, {{}, "1", "J2"}, options);
        QVERIFY(reason.isConnected == false && reason.isConnectedOverOthers);
        options.requiredComponents = {"K9"};
        QVERIFY_THROWS_EXCEPTION(VelkSystemException, system.routes(from, from, options));
    }

    void checks()
    {
        const VelkSystem system({twoRelays, twoRelays});
        const auto findings = system.check();
        QCOMPARE(findings.at(0).code, std::string("same-netlist-twice"));
        QVERIFY(findings[0].files == (std::vector<int>{1, 2}) && !findings[0].advice.empty());
        QCOMPARE(system.check({"same-netlist-twice"}).size(), findings.size() - 1);
        QList<KiCadNetlistFile> files{2, KiCadNetlistFile(qt(twoRelays))};
        const MultipleEDAProvider joined({files[0].netlist().get(), files[1].netlist().get()}, {u"Connector"_s});
        SystemCheck check(joined);
        for (const auto &file : files)
            check.addFile(file.fileName(), file.repetitions());
        QCOMPARE(texts(findings, [](const VelkFinding &finding) { return qt(finding.message); }),
                 texts(check.findings(), [](const Finding &finding) { return finding.message(); }));
    }

    void opensSystemFiles()
    {
        write(u"U1 [1] CompType=Source\nJ1 [1] CompType=DUT\nK1 [1 2] CompType=Relay\nF1 [1 2] CompType=Fuse\n"
              "F2 [1 2] CompType=Fuse\nX1 [1] \nA: U1/1 K1/1 F1/1 F2/1\nB: K1/2 F1/2 F2/2 J1/1 X1/1"_s);
        const QString file = folder.filePath(u"velk.toml"_s);
        ::write(file, u"netlists = [\"1.net\"]\nswitchable = [\"Relay\", \"Fuse\"]\npassive = [\"Fuse\"]\n"
                      "max-routes = 2\nmax-switches = 0\nmax-connections = 1\nignore = [\"no-type\"]"_s);
        const VelkSystem system = VelkSystem::open(file.toStdString());
        QCOMPARE(system.fileNames(), std::vector<std::string>{folder.filePath(u"1.net"_s).toStdString()});
        const VelkSearchOptions limits = system.searchOptions();
        QVERIFY(limits.maxRoutes == 2 && limits.maxSwitches == 0 && limits.maxConnections == 1);
        const VelkRouteEnd from{{}, "1", "U1"};
        const VelkRouteEnd to{{}, "1", "J1"};
        QCOMPARE(system.routes(from, to).size(), std::size_t(2));
        QCOMPARE(system.routes(from, to, VelkSearchOptions()).size(), std::size_t(3));
        QCOMPARE(system.whyNoRoute(from, to).shortest, std::size_t(1));

        ::write(file, u"netlists = [\"1.net\"]\nswitchable = [\"Relay\", \"Fuse\"]\nwithout = [\"F1\", "
                      "\"CompType=Relay\"]\n"_s);
        QCOMPARE(VelkSystem::open(file.toStdString()).routes(from, to).size(), std::size_t(1));
        ::write(file, u"netlists = [\"1.net\"]\nwithout-net = [\"B\"]\n"_s);
        QVERIFY(VelkSystem::open(file.toStdString()).routes(from, to).empty());
        ::write(file, u"netlists = [\"1.net\"]\nwithout-net = [\"C\"]\n"_s);
        try {
            VelkSystem::open(file.toStdString());
            QFAIL("nothing is thrown");
        } catch (const VelkSystemException &exception) {
            QCOMPARE(qt(exception.message()), file + u": there is no net 'C'; there are A#1, B#1"_s);
        }

        const VelkSystem plain(system.fileNames(), system.options());
        QCOMPARE(plain.searchOptions().maxSwitches, VelkSearchOptions().maxSwitches);
        const auto found = plain.check();
        QVERIFY(std::any_of(found.begin(), found.end(), [](const auto &finding) { return finding.code == "no-type"; }));
        QVERIFY(found.back().code != "no-type");
        QVERIFY(system.check() == plain.check({"no-type"}));
        QVERIFY(system.check({found.back().code}) == plain.check({"no-type", found.back().code}));
    }

    void writesIniFiles()
    {
        const VelkSystem system({twoRelays});
        const QString file = folder.filePath(u"ä.ini"_s);
        system.writePhysicalIni(file.toStdString());
        QCOMPARE(read(file), u"[device->U1]\nCompType=Source\n"_s);
        QCOMPARE(qt(system.physicalIni()), read(file));
        system.writeApplicationIni(file.toStdString(), system);
        QVERIFY(read(file).startsWith(u"[ResourceManager]\nTestSystemEdaNet=%1\n"_s.arg(qt(twoRelays))));
        QCOMPARE(qt(system.applicationIni(system)), read(file));
        const QByteArray pipe = folder.filePath(u"pipe"_s).toUtf8();
        QCOMPARE(mkfifo(pipe.constData(), 0600), 0);
        QVERIFY_THROWS_EXCEPTION(VelkSystemException, system.writePhysicalIni(pipe.toStdString()));
        QVERIFY(QFileInfo::exists(QString::fromUtf8(pipe)) && !QFileInfo(QString::fromUtf8(pipe)).isFile());
    }

    void fails_data()
    {
        QTest::addColumn<Action>("action");
        QTest::addColumn<Kind>("kind");
        QTest::addColumn<QString>("message");
        const auto add = [](const char *name, Kind kind, const QString &message, const Action &action) {
            QTest::newRow(name) << action << kind << message;
        };
        add("no file", Kind::Reading, u"none.net: cannot be read: No such file or directory"_s,
            [](const VelkSystem &) { VelkSystem({"none.net"}); });
        add("no component", Kind::NotFound,
            u"K3: no component has this reference; there are K1#1, K2#1, J1#1, J2#1, U1#1"_s,
            [](const VelkSystem &system) { system.component("K3"); });
        add("no net", Kind::NotFound, u"there is no net 'D'; there are A#1, B#1, C#1"_s,
            [](const VelkSystem &system) { system.net("D"); });
        add("no part", Kind::NotFound, u"there is no part 'k'; there are K#1, S#1"_s,
            [](const VelkSystem &system) { system.part("k"); });
        add("part of two netlists", Kind::NotFound, u"several netlists have a part 'K'"_s,
            [](const VelkSystem &system) {
                VelkSystem({system.fileNames()[0], system.fileNames()[0]}).part("K");
            });
        add("no properties", Kind::NotFound,
            u"No component matching properties 'CompType=Fuse' found; no component has CompType=Fuse; values of CompType: DUT, Dut, Source, Relay, relay"_s,
            [](const VelkSystem &system) {
                system.routes({{{"CompType", "Fuse"}}, "1"}, {{}, "1", "J1"});
            });
        add("no pin", Kind::NotFound, u"no pin 'LO' on U1#1; its pins: HI (1)"_s, [](const VelkSystem &system) {
            system.whyNoRoute({{}, "1", "J1"}, {{}, "LO", "U1"});
        });
        add("no such pin", Kind::NotFound, u"no pin 'LO' on U1#1; its pins: HI (1)"_s, [](const VelkSystem &system) {
            system.pin({{}, "LO", "U1"});
        });
        add("no folder", Kind::Writing, u"none/a.ini: cannot be written: No such file or directory"_s,
            [](const VelkSystem &system) { system.writePhysicalIni("none/a.ini"); });
    }
    void fails()
    {
        QFETCH(Action, action);
        QFETCH(Kind, kind);
        try {
            action(VelkSystem({twoRelays}));
            QFAIL("nothing is thrown");
        } catch (const VelkSystemException &exception) {
            QTEST(qt(exception.message()), "message");
            QCOMPARE(exception.what(), exception.message().c_str());
            QVERIFY(exception.kind() == kind);
        }
    }

    void callsOff()
    {
        QString ladder = u"U1 Source 1\nD1 DUT 1\n"_s; // of 64,000 routes
        QStringList nets{u"A: U1/1"_s, u"B:"_s, u"C:"_s, u"D: D1/1"_s};
        for (int i = 0; i < 120; ++i) {
            ladder += u"K%1 Relay 1,2\n"_s.arg(i);
            nets[i % 3] += u" K%1/1"_s.arg(i);
            nets[i % 3 + 1] += u" K%1/2"_s.arg(i);
        }
        const VelkSystem system({write(*systemOf(ladder + nets.join(u'\n')), u"ladder.net"_s)});
        VelkSearchOptions options;
        int asked = 0;
        options.isCalledOff = [] { return true; };
        QVERIFY_THROWS_EXCEPTION(VelkSystemException,
                                 VelkSystem({twoRelays}).routes({{}, "HI", "U1"}, {{}, "1", "J1"}, options));
        options.isCalledOff = [&asked] { return ++asked == 2; };
        try {
            system.routes({{}, "1", "U1"}, {{}, "1", "D1"}, options);
            QFAIL("nothing is thrown");
        } catch (const VelkSystemException &exception) {
            QCOMPARE(exception.message(), std::string("The search was called off"));
            QVERIFY(exception.kind() == Kind::CalledOff);
        }
        QCOMPARE(asked, 2);
    }

    void refusesMistypedBenches()
    {
        auto application = systemOf(u"J1 Dut 1\nN: J1/1"_s);
        application->components.first()->properties.insert(u"Bench"_s, u"100000"_s);
        const VelkSystem system({write(*application, u"a.net"_s)});
        QVERIFY_THROWS_EXCEPTION(VelkSystemException, system.applicationIni(system));
    }

    void logsNothing()
    {
        static int messages;
        messages = 0;
        const auto previous =
            qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) { ++messages; });
        VelkRouting::setTraceEnabled(true);
        const VelkSystem system({twoRelays});
        const auto routes = system.routes({{}, "HI", "U1"}, {{}, "1", "J1"});
        const bool isStillEnabled = VelkRouting::isTraceEnabled();
        qInstallMessageHandler(previous);
        QCOMPARE(routes.size(), std::size_t(1));
        QVERIFY(isStillEnabled);
        QCOMPARE(messages, 0);
    }

    void warns()
    {
        const std::string file = QStringLiteral(VELK_TEST_DATA "/kicad5.net").toStdString();
        QCOMPARE(VelkSystem({file}, tolerantly()).warnings(),
                 VelkRouting({file}, {}, VelkReadingMode::Tolerant).warnings());
    }

private:
    using Pins = std::vector<VelkNodeInfo>;

    static bool holdEnds(const std::vector<Pins> &sets)
    {
        return std::any_of(sets.begin(), sets.end(), [](const Pins &pins) {
            const auto holds = [&](const std::string &ref) {
                return std::any_of(pins.begin(), pins.end(), [&](const VelkNodeInfo &pin) {
                    return pin.component == ref && pin.pin.number == "1";
                });
            };
            return holds("U1#1") && holds("J1#1");
        });
    }

    static std::vector<Pins> united(const std::vector<Pins> &sets)
    {
        Pins all;
        for (const Pins &pins : sets)
            all.insert(all.end(), pins.begin(), pins.end());
        return {all};
    }

    std::string write(const QString &board) { return writeBoards(board, folder.path()).first().toStdString(); }

    std::string write(const EDAProvider &provider, const QString &name)
    {
        const QString fileName = folder.filePath(name);
        ::write(fileName, NetlistText::netlist(provider));
        return fileName.toStdString();
    }

    std::vector<std::string> write(const std::vector<std::unique_ptr<StubProvider>> &boards)
    {
        std::vector<std::string> names;
        for (const auto &board : boards)
            names.push_back(write(*board, u"%1.net"_s.arg(names.size())));
        return names;
    }

    const std::string twoRelays = QStringLiteral(VELK_TEST_DATA "/two_relays.net").toStdString();
    QTemporaryDir folder;
};

VELK_TEST(VelkSystemTest)

#include "VelkSystemTest.moc"
