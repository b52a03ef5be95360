#include "tests/support/Copies.h"
#include "tests/support/NetlistText.h"
#include "tests/support/Process.h"
#include "tests/support/TestRegistry.h"
#include "tests/support/TextTable.h"

#include <velk/VelkVersion.h>
#include <velk/facade/VelkRouting.h>

#include <QTemporaryDir>
#include <QTest>

#include <cstring>
#include <exception>
#include <type_traits>

using namespace Qt::StringLiterals;
using namespace Velk;

static_assert(!std::is_copy_constructible_v<VelkRouting> && std::is_copy_assignable_v<VelkRouting>);
static_assert(!std::is_base_of_v<std::exception, VelkRoutingException>);

namespace {

// Two relays in series, two DUTs on the net between them.
const QByteArray netlist = textOf("two_relays.net").toUtf8();

std::string describe(const VelkComponentInfo &component)
{
    std::string text = component.ref + " '" + component.value + "' " + component.part;
    for (const auto &[key, value] : component.properties)
        text += " " + key + "=" + value;
    return text;
}
}

class VelkRoutingTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void version() { QCOMPARE(VelkRouting::version(), std::string(VELK_VERSION_STRING)); }

    void returnsRecords()
    {
        const VelkRouting routing({write("a.net", netlist)});
        QCOMPARE(query(routing).size(), std::size_t(1));
        const auto shorter = routing.getRoutes({{"CompType", "Source"}}, "HI", {{"CompType", "DUT"}}, "1");
        QCOMPARE(shorter.at(0).switchingComponents.size(), std::size_t(1));
        const auto routes = query(routing);
        QCOMPARE(routes.size(), std::size_t(1));
        QCOMPARE(routes[0].switchingComponents.size(), std::size_t(2));
        QCOMPARE(describe(routes[0].switchingComponents[0]), std::string("K1#1 '5 V' K#1 Card=1 CompType=relay"));
        QCOMPARE(describe(routes[0].switchingComponents[1]), std::string("K2#1 '' K#1 CompType=Relay"));
        QCOMPARE(routes[0].additionalConnections.size(), std::size_t(1));
        const auto &connection = routes[0].additionalConnections[0];
        QCOMPARE(describe(connection.component), std::string("J2#1 'Ω' S#1 CompType=DUT"));
        QCOMPARE(connection.pin.number + connection.pin.name + connection.pin.type, std::string("1HIoutput"));
    }

    // A connector's pin 1 is joined with all later ones of components that have no Identifier either.
    void joinsAtConnectorTypes_data() { addRowsFrom("connector_types.txt", {"type", "switches"}); }
    void joinsAtConnectorTypes()
    {
        QFETCH(QString, type);
        const auto file =
            write("a.net", QByteArray(netlist).replace("\"DUT\"", type == u"Bügel"_s ? "\"Bügel\"" : "\"Connector\""));
        const auto types = type.isEmpty() ? std::vector<std::string>() : std::vector{type.toStdString()};
        const auto routes = query(VelkRouting({file}, types));
        QCOMPARE(routes.size(), std::size_t(1));
        QTEST(QString::number(routes[0].switchingComponents.size()), "switches");
    }

    // The records of the first answer are more than are kept.
    void answersAgainWithoutRecords()
    {
        QByteArray relays, atSource, atDut;
        for (int i = 0; i < 20'001; ++i) {
            const QByteArray ref = "R" + QByteArray::number(i);
            relays += NetlistText::component(ref, "K", NetlistText::property("CompType", "Relay"));
            atSource += NetlistText::node(ref, "1");
            atDut += NetlistText::node(ref, "2");
        }
        QByteArray large = netlist;
        large.replace("(components", "(components " + relays).replace("(name \"A\")", "(name \"A\") " + atSource);
        large.replace("(name \"C\")", "(name \"C\") " + atDut);
        VelkRouting routing({write("large.net", large)});
        const auto texts = [&routing] {
            std::vector<std::string> result;
            for (const auto &route : query(routing))
                result.push_back(describe(route.switchingComponents.back()));
            return result;
        };
        const auto first = texts();
        QCOMPARE(first.size(), std::size_t(20'002));
        QCOMPARE(first[20'000], std::string("R20000#1 '' K#1 CompType=Relay"));
        QVERIFY(texts() == first);
        routing.setMaxRoutes(2);
        QCOMPARE(texts(), std::vector(first.begin(), first.begin() + 2));
    }

    void assignmentShares()
    {
        VelkRouting first({write("a.net", netlist)});
        VelkRouting second({write("b.net", "(export (components) (libparts) (nets))")});
        std::byte owned[sizeof(second)]; // which the assignment would leak
        std::memcpy(owned, &second, sizeof(second));
        second = first;
        QCOMPARE(query(second).size(), std::size_t(1));
        second.setSwitchableTypes({});
        QVERIFY(query(first).empty());
        std::memcpy(static_cast<void *>(&second), owned, sizeof(second));
        QCOMPARE(textsOfCopies(VelkRoutingException("a"), VelkRoutingException("b"),
                               [](const VelkRoutingException &e) { return QString::fromStdString(e.message()); }),
                 QStringList{u"a"_s});
    }

    void readsTolerantly()
    {
        const std::string file = QStringLiteral(VELK_TEST_DATA "/kicad5.net").toStdString();
        QVERIFY_THROWS_EXCEPTION(VelkRoutingException, VelkRouting({file}));
        const VelkRouting routing({file}, {}, VelkReadingMode::Tolerant);
        QCOMPARE(routing.getRoutes({{"CompType", ""}}, "HI", {{"CompType", "Resistor"}}, "1").size(), std::size_t(1));
        QCOMPARE(routing.warnings().size(), std::size_t(2));
        QCOMPARE(routing.warnings()[0],
                 file + ": /export/components/comp[R1]/libsource/part: 'R_Small' is an alias of 'R'");

        const std::string cutOff = write("cut.net", netlist.chopped(2));
        for (const auto mode : {VelkReadingMode::Default, VelkReadingMode::Tolerant}) {
            const VelkRouting ofCutOff({cutOff}, {}, mode);
            QCOMPARE(ofCutOff.warnings().at(0), cutOff + ": is not one list in parentheses as a whole");
            QCOMPARE(query(ofCutOff).size(), std::size_t(1));
        }
        QVERIFY(VelkRouting({write("a.net", netlist)}).warnings().empty());
    }

    void warns()
    {
        const std::string file = write("a.net", QByteArray(netlist).replace("Ω", "\xe4") + "\n");
        const std::vector<std::string> byDefault = VelkRouting({file}).warnings();
        const std::vector<std::string> tolerant = VelkRouting({file}, {}, VelkReadingMode::Tolerant).warnings();
        QCOMPARE(byDefault,
                 std::vector<std::string>{
                     file + ": is not UTF-8 at line 8, column 30, so names that differ there alone are taken for one"});
        QCOMPARE(tolerant,
                 std::vector<std::string>{file + ": is not UTF-8 at line 8, column 30, and taken as Latin-1 there"});
    }

    void configures()
    {
        VelkRouting routing({write("a.net", netlist)});
        QCOMPARE(routing.interfaceTypes(), (std::vector<std::string>{"Source", "DUT"}));
        QCOMPARE(routing.switchableTypes(), (std::vector<std::string>{"Relay", "Resistor"}));
        QCOMPARE(routing.maxSwitchingComponentsPerPath(), 5U);
        routing.setMaxRoutes(7);
        QCOMPARE(routing.maxRoutes(), std::size_t(7));
        routing.setExcludedComponents({"K9", "K1#1"});
        QVERIFY(query(routing).empty());
        QCOMPARE(routing.excludedComponents(), (std::vector<std::string>{"K9", "K1#1"}));
        routing.setExcludedComponents({});
        routing.setExcludedNets({"B#1", "B"});
        QVERIFY(query(routing).empty());
        QCOMPARE(routing.excludedNets(), (std::vector<std::string>{"B#1", "B"}));
        QCOMPARE(routing.unknownExclusions(), std::vector<std::string>{"B"});
        routing.setExcludedNets({});
        QCOMPARE(query(routing).size(), std::size_t(1));
        routing.setMaxAdditionalConnectionsPerPath(0);
        QVERIFY(query(routing).empty());
        routing.setInterfaceTypes({"Source"});
        QCOMPARE(query(routing).size(), std::size_t(1));
        QVERIFY(query(routing)[0].additionalConnections.empty());
        for (const unsigned int directOnly : {4294967295U, 2147483648U, 2147483647U}) {
            routing.setMaxSwitchingComponentsPerPath(directOnly);
            QVERIFY(query(routing).empty());
        }
        routing.setMaxSwitchingComponentsPerPath(1);
        QCOMPARE(query(routing).size(), std::size_t(1));
        routing.setMaxAdditionalConnectionsPerPath(4294967295U);
        QVERIFY(query(routing).empty());
        QCOMPARE(routing.maxAdditionalConnectionsPerPath(), 4294967295U);
        routing.setMaxAdditionalConnectionsPerPath(3);
        routing.setSwitchableTypes({"Fuse"});
        QVERIFY(query(routing).empty());
    }

    void traceCanBeSwitched()
    {
        const VelkRouting routing({write("a.net", netlist)});
        static int messages;
        const auto previous =
            qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) { ++messages; });
        for (const bool enabled : {true, false}) {
            messages = 0;
            VelkRouting::setTraceEnabled(enabled);
            QCOMPARE(VelkRouting::isTraceEnabled(), enabled);
            query(routing);
            QCOMPARE(messages > 0, enabled);
        }
        qInstallMessageHandler(previous);
    }

    void refusesFiles_data()
    {
        QTest::addColumn<QByteArray>("content"); // null for no file
        QTest::addColumn<QString>("expected");   // %1 stands for the file name
        QTest::newRow("missing") << QByteArray() << u"Could not open KiCad (%1)"_s;
        QTest::newRow("syntax error") << QByteArray("(export\n ))")
                                      << u"Syntax error in KiCad file '%1' at line 2, column 3"_s;
        QTest::newRow("empty") << QByteArray("") << u"Could not find KiCad token for path '/export/libparts'"_s;
        QTest::newRow("no components") << QByteArray("(export (libparts))")
                                       << u"Could not find KiCad token for path '/export/components'"_s;
    }
    void refusesFiles()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, expected);
        const std::string good = write("good.net", netlist);
        const std::string bad =
            content.isNull() ? folder.filePath(u"none.net"_s).toStdString() : write("bad.net", content);
        QCOMPARE(failure([&] { VelkRouting({good, bad}); }), expected.replace(u"%1"_s, QString::fromStdString(bad)));
    }

    void refusesQueries()
    {
        const VelkRouting routing({write("a.net", netlist)});
        using Properties = std::map<std::string, std::string>;
        const auto refusal = [](const VelkRouting &asked, const Properties &source, const char *pin,
                                const Properties &destination = {}) {
            return failure([&] { asked.getRoutes(source, pin, destination, "1"); });
        };
        QCOMPARE(refusal(routing, {}, "1", {{"Dev", "X"}}), u"No component matching properties 'Dev=X' found"_s);
        QCOMPARE(refusal(routing, {{"Dev", "X"}}, "1"), u"No component matching properties 'Dev=X' found"_s);
        QCOMPARE(refusal(routing, {{"CompType", "Source"}}, "7", {{"Dev", "X"}}),
                 u"No pin '7' found for part 'S#1' of component 'U1#1'"_s);
        QCOMPARE(refusal(VelkRouting({}), {}, "1"), u"No component matching properties '' found"_s);
    }

private:
    static std::vector<VelkRoutingPath> query(const VelkRouting &routing)
    {
        return routing.getRoutes({{"CompType", "Source"}}, "HI", {{"CompType", "Dut"}}, "1");
    }

    std::string write(const char *name, const QByteArray &content)
    {
        const QString fileName = folder.filePath(QString::fromLatin1(name));
        ::write(fileName, content);
        return fileName.toStdString();
    }

    template <typename Action>
    static QString failure(Action action)
    {
        try {
            action();
        } catch (const VelkRoutingException &exception) {
            return QString::fromStdString(exception.message());
        }
        return {};
    }

    QTemporaryDir folder;
};

VELK_TEST(VelkRoutingTest)

#include "VelkRoutingTest.moc"
