#include "tests/support/StubProvider.h"
#include "tests/support/TestRegistry.h"
#include "tests/support/TextTable.h"

#include <velk/facade/VelkRouting.h>
#include <velk/kicad/KiCadNetParser.h>
#include <velk/kicad/KiCadReader.h>
#include <velk/provider/MultipleEDAProvider.h>

#include <QFile>
#include <QTest>

#include <limits>
#include <memory>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace {

using Properties = std::map<std::string, std::string>;

/// "FGEN 1 2 OUT" or "FGEN 1 - OUT": device, its number, channel and pin; "DUT 2 VCC": bench and pin.
struct End
{
    explicit End(const QString &text)
    {
        const QStringList words = text.split(u' ');
        if (words.at(0) == u"DUT"_s) {
            properties = {{"CompType", "DUT"}, {"Bench", words.at(1).toStdString()}};
        } else {
            properties = {{"Dev", words.at(0).toStdString()}, {"DevNo", words.at(1).toStdString()}};
            if (words.at(2) != u"-"_s)
                properties["Channel"] = words.at(2).toStdString();
        }
        pin = words.last().toStdString();
    }
    Properties properties;
    std::string pin;
};

/// "R1#1 K101#2" for each route.
QStringList routesBetween(const VelkRouting &routing, const QString &source, const QString &dut)
{
    const End from(source), to(dut);
    QStringList texts;
    for (const auto &route : routing.getRoutes(from.properties, from.pin, to.properties, to.pin)) {
        QStringList refs;
        for (const auto &component : route.switchingComponents)
            refs.append(QString::fromStdString(component.ref));
        texts.append(refs.join(u' '));
    }
    return texts;
}

/// "2: 1, 4: 21" for one route of two switches and 21 of four.
QString countsBySwitches(const QStringList &routes)
{
    QMap<qsizetype, int> counts;
    for (const QString &route : routes)
        ++counts[route.split(u' ', Qt::SkipEmptyParts).size()];
    QStringList texts;
    for (auto it = counts.cbegin(); it != counts.cend(); ++it)
        texts.append(u"%1: %2"_s.arg(it.key()).arg(it.value()));
    return texts.join(u", "_s);
}

QString demoFolder(bool kicad10)
{
    return kicad10 ? QStringLiteral(VELK_TEST_DATA "/demo_kicad10/")
                   : QStringLiteral(VELK_SOURCE_DIR "/examples/demo/");
}

std::vector<std::string> files(const QString &folder, const QStringList &names)
{
    std::vector<std::string> result;
    for (const QString &name : names)
        result.push_back((folder + name + u".net"_s).toStdString());
    return result;
}

const QStringList demoBoards{u"instruments"_s, u"matrix"_s, u"adapter"_s};
const QStringList largeBoards{u"instruments"_s, u"backplane"_s, u"matrix1"_s, u"matrix2"_s,
                              u"matrix3"_s,     u"matrix4"_s,   u"matrix5"_s, u"adapter"_s};
}

/// The two bundled systems, real exports whose answers were worked out by hand from the schematics.
class ExampleSystemsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void demoRoutes_data()
    {
        addRowsFrom("demo_routes.txt", {"source", "dut", "maxSwitches", "alsoSwitchable", "first", "counts"});
    }
    void demoRoutes()
    {
        QFETCH(QString, source);
        QFETCH(QString, dut);
        QFETCH(QString, maxSwitches);
        QFETCH(QString, alsoSwitchable);
        QFETCH(QString, first);
        for (const bool kicad10 : {false, true}) {
            VelkRouting routing(files(demoFolder(kicad10), demoBoards));
            routing.setMaxSwitchingComponentsPerPath(maxSwitches.toUInt());
            if (!alsoSwitchable.isEmpty())
                routing.setSwitchableTypes({"Relay", "Resistor", alsoSwitchable.toStdString()});
            const QStringList routes = routesBetween(routing, source, dut);
            QCOMPARE(routes.mid(0, first.count(u',') + 1).join(u", "_s), first);
            QTEST(countsBySwitches(routes), "counts");
            routing.setMaxRoutes(static_cast<std::size_t>(first.count(u',')) + 1);
            QCOMPARE(routesBetween(routing, source, dut).join(u", "_s), first);
        }
    }

    void demoSideConnectionLimits()
    {
        VelkRouting routing(files(demoFolder(false), demoBoards));
        QList<qsizetype> counts;
        for (const unsigned int limit : {3U, 2U, 1U, 0U}) {
            routing.setMaxAdditionalConnectionsPerPath(limit);
            counts.append(routesBetween(routing, u"SMU 1 - FORCE_HI"_s, u"DUT 1 IN_P"_s).size());
        }
        QCOMPARE(counts, (QList<qsizetype>{274, 194, 69, 9}));
    }

    void demoRouteBounds()
    {
        VelkRouting routing(files(demoFolder(false), demoBoards));
        QList<qsizetype> counts;
        for (const std::size_t bound : {std::size_t(1), std::size_t(200), std::size_t(1000), std::size_t(0),
                                        std::numeric_limits<std::size_t>::max()}) {
            routing.setMaxRoutes(bound);
            counts.append(routesBetween(routing, u"SMU 1 - FORCE_HI"_s, u"DUT 1 IN_P"_s).size());
        }
        QCOMPARE(counts, (QList<qsizetype>{1, 200, 274, 274, 274}));
    }

    void demoNets()
    {
        std::vector<std::unique_ptr<KiCadNetParser>> parsers;
        QList<EDAProvider *> boards;
        qsizetype separateNets = 0;
        for (const auto &name : files(demoFolder(false), demoBoards)) {
            QFile file(QString::fromStdString(name));
            KiCadReader reader(&file);
            QCOMPARE(reader.read(), KiCadNoError);
            parsers.push_back(std::make_unique<KiCadNetParser>(reader.getRoot()));
            parsers.back()->parse();
            boards.append(parsers.back().get());
            separateNets += boards.last()->getNets().size();
        }
        const MultipleEDAProvider system(boards, {MultipleEDAProvider::DEFAULT_CONNECTOR_COMPONENT_TYPE});
        QCOMPARE(system.getComponents().size(), 64);
        QCOMPARE(separateNets, 111);
        QCOMPARE(system.getNets().size(), 59);
        const QStringList lines = netsToText(system.getNets()).split(u'\n');
        QVERIFY(lines.contains(u"V_S+#3+/PSU1_SP#1+/VSENSE_P#2: J1#3/7 X2#3/21 U5#1/3 X1#1/21 X1#2/21 X2#2/21"_s));
        for (const QString &name : {u"/SMU1_FL#1+/ROW2#2"_s, u"/COL1#2+COL1#3"_s, u"AGND#3+AGND#1+AGND#2"_s,
                                    u"/DMM1_SH#1+unconnected-(X1-Pin_7-Pad7)#2"_s})
            QVERIFY2(lines.filter(name + u':').size() == 1, qPrintable(name));
    }

    void largeSystem()
    {
        VelkRouting routing(files(QStringLiteral(VELK_TEST_DATA "/large/"), largeBoards));
        routing.setMaxSwitchingComponentsPerPath(2);
        QCOMPARE(routesBetween(routing, u"SMU 1 - FORCE_HI"_s, u"DUT 1 VCC"_s), QStringList{u"R1#1 K101#2 K10101#3"_s});
        QCOMPARE(routesBetween(routing, u"DMM 2 - LO"_s, u"DUT 7 RESET"_s), QStringList{u"R16#1 K416#2 K41620#6"_s});
        QCOMPARE(routesBetween(routing, u"FGEN 1 1 GND"_s, u"DUT 4 GND"_s), QStringList{QString()});
    }
};

VELK_TEST(ExampleSystemsTest)

#include "ExampleSystemsTest.moc"
