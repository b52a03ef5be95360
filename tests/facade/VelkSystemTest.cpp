#include "tests/support/NetlistText.h"
#include "tests/support/Process.h"
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

/// "N0#1 1 K1#1 2 N3#1 | N3#1:J1#1.1": the steps and last net, then the side connections.
QString describe(const VelkRoute &route)
{
    QStringList words;
    for (const auto &step : route.steps)
        words += {qt(step.net), qt(step.pinIn.number), qt(step.component), qt(step.pinOut.number)};
    words += {qt(route.lastNet), u"|"_s};
    for (const auto &side : route.sideConnections)
        words.append(u"%1:%2.%3"_s.arg(qt(side.net), qt(side.component), qt(side.pin.number)));
    return words.join(u' ');
}

QString describe(const TracedPath &path)
{
    QStringList words;
    for (const auto &step : path.steps)
        words += {step.net->name, step.entryPin, step.component->ref, step.exitPin};
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
            routing.setMaxPaths(seed % 3);
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
                const auto reason = system.whyNoRoute(seed % 2 == 0 ? source : relay, dut);
                QVERIFY2(reason.isComplete && *reason.isConnected == !reason.sufficientLimits.empty(),
                         qPrintable(place));
            }
            found += static_cast<int>(routes.size());
        }
        QVERIFY(found > 100);
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
        QVERIFY(copy.pins("U1") == (std::vector<VelkPlacedPin>{{{"1", "HI", "output"}, "A#1"}}));
        const auto routes = copy.routes({{}, "HI", "U1"}, {{}, "1", "J1"});
        QCOMPARE(routes.size(), std::size_t(1));
        QCOMPARE(describe(routes[0]), u"A#1 1 K1#1 2 B#1 1 K2#1 2 C#1 | B#1:J2#1.1"_s);
        VelkSearchOptions none;
        none.maxSwitches = 0;
        QVERIFY(copy.routes({{}, "HI", "U1"}, {{}, "1", "J1"}, none).empty());
        const auto reason = copy.whyNoRoute({{}, "HI", "U1"}, {{}, "1", "J1"}, none);
        QVERIFY(reason.shortest == std::size_t(2) &&
                reason.sufficientLimits == (std::vector<VelkSufficientLimits>{{1, 3, 2, 1}}));
        QCOMPARE(Routing(nullptr).maxSwitchingComponentsPerPath(), VelkSearchOptions().maxSwitches);
        QCOMPARE(Routing(nullptr).maxAdditionalNodesPerPath(), VelkSearchOptions().maxConnections);
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
