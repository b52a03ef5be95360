#include "tests/support/StubProvider.h"
#include "tests/support/TestRegistry.h"

#include <velk/ini/EDAApplicationIniGenerator.h>
#include <velk/ini/EDAPhysicalIniGenerator.h>

#include <QBuffer>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace {

/// Adds a component with the pins A and B (numbers 1 and 2) and properties as "Key=Value Key=Value".
QSharedPointer<EDAComponent> add(StubProvider &netlist, const QString &ref, const QString &properties)
{
    const auto component = netlist.add(ref, {}, {u"1=A"_s, u"2=B"_s});
    component->properties.clear();
    for (const QString &property : properties.split(u' ', Qt::SkipEmptyParts))
        component->properties.insert(property.section(u'=', 0, 0), property.section(u'=', 1));
    return component;
}

QString physicalIni(const EDAPhysicalIniGenerator &generator)
{
    QBuffer buffer;
    generator.generate(&buffer);
    return QString::fromUtf8(buffer.data());
}

QString applicationIni(const EDAApplicationIniGenerator &generator)
{
    QBuffer buffer;
    generator.generate(&buffer, u"ts.net"_s, u"app.net"_s);
    return QString::fromUtf8(buffer.data());
}

const QString head = u"[ResourceManager]\nTestSystemEdaNet=ts.net\nApplicationEdaNet=app.net\n\n[LogicalNames]\n"_s;
}

class IniGeneratorTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void physical()
    {
        StubProvider netlist;
        add(netlist, u"SMU1"_s, u"DevNo=1 CompType=Source Dev=SMU_A a= Z=z"_s);
        add(netlist, u"K1"_s, u"CompType=Relay"_s);
        add(netlist, u"B%1"_s, u"CompType=SOURCE"_s);
        add(netlist, u"B%1"_s, u"CompType=source"_s);
        EDAPhysicalIniGenerator generator(&netlist);
        QCOMPARE(physicalIni(generator), u"[device->SMU1]\nCompType=Source\nDev=SMU_A\nDevNo=1\nZ=z\na=\n\n"
                                         "[device->B%1]\nCompType=SOURCE\n\n[device->B%1]\nCompType=source\n"_s);
        generator.setComponentTypesThatAreExported({u"relay"_s});
        QCOMPARE(physicalIni(generator), u"[device->K1]\nCompType=Relay\n"_s);
        generator.setComponentTypesThatAreExported({});
        QCOMPARE(physicalIni(generator), QString());

        const EDAPhysicalIniGenerator before(&netlist);
        EDAPhysicalIniGenerator::DEFAULT_SOURCE_COMPONENT_TYPE = u"Relay"_s;
        const EDAPhysicalIniGenerator after(&netlist);
        EDAPhysicalIniGenerator::DEFAULT_SOURCE_COMPONENT_TYPE = u"Source"_s;
        QVERIFY(physicalIni(before).startsWith(u"[device->SMU1]"_s));
        QCOMPARE(physicalIni(after), u"[device->K1]\nCompType=Relay\n"_s);
    }

    void application()
    {
        StubProvider testSystem, duts;
        const auto source = add(testSystem, u"U1"_s, u"CompType=Source Dev=DMM DevNo=1"_s);
        add(testSystem, u"U9"_s, u"CompType=Dut Bench=5"_s); // DUTs come from the other netlist only
        add(duts, u"J1"_s, u"CompType=Dut Bench=1 Identifier=X1 Group=PWR"_s);
        add(duts, u"J9"_s, u"CompType=Source Dev=A DevNo=1"_s);
        const EDAApplicationIniGenerator generator(&testSystem, &duts);
        const QString beforeSources = head + u"DUT=bench->DUT\n\n[bench->DUT]\nAppChannelTable=io_channel->ROUTE1\n\n"
                                             "[io_channel->ROUTE1]\n; Type Dut, Reference J1\n"
                                             "PWR.A=X1!A\nPWR.B=X1!B\n; Type Source, Reference U1\n"_s;
        QCOMPARE(applicationIni(generator), beforeSources + u"DMM-No1.A=U1!A\nDMM-No1.B=U1!B\n"_s);
        source->properties.insert(u"Channel"_s, u"0"_s);
        source->properties.insert(u"Group"_s, u"DMM"_s);
        QCOMPARE(applicationIni(generator), beforeSources + u"DMM-No1-Ch0.A=U1!A\nDMM-No1-Ch0.B=U1!B\n"
                                                            "; Type Source, Group DMM\nDMM.A=DMM!A\nDMM.B=DMM!B\n"_s);
    }

    void groups()
    {
        StubProvider testSystem, duts;
        add(testSystem, u"U1"_s, u"CompType=Source Group=b"_s);
        add(testSystem, u"U2"_s, u"CompType=SOURCE"_s);
        add(testSystem, u"U3"_s, u"CompType=source Group=B%1"_s);
        add(testSystem, u"U4"_s, u"CompType=Source Group=B%1"_s);
        testSystem.parts[1]->pins.clear();
        testSystem.parts.removeFirst(); // a part that is unknown leaves the comment
        const QString ini = applicationIni(EDAApplicationIniGenerator(&testSystem, &duts));
        QCOMPARE(ini.section(u"[io_channel->ROUTE1]\n"_s, 1),
                 u"; Type Source, Reference U1\n; Type SOURCE, Reference U2\n"
                 "; Type source, Reference U3\n-No.A=U3!A\n-No.B=U3!B\n"
                 "; Type Source, Reference U4\n-No.A=U4!A\n-No.B=U4!B\n"
                 "; Type source, Group B%1\nB%1.A=B%1!A\nB%1.B=B%1!B\n" // the index below fills the placeholder
                 "B2[%2].A=B%1!A\nB2[%2].B=B%1!B\n; Type Source, Group b\n"_s);
    }

    void benches_data()
    {
        QTest::addColumn<QStringList>("benches"); // of the DUTs J0, J1, ...
        QTest::addColumn<QString>("expected");    // the DUTs in each channel table
        QTest::newRow("no DUT") << QStringList() << u"1:"_s;
        QTest::newRow("a gap stays") << QStringList{u"3"_s, u"1"_s, u"3"_s} << u"1: J1 2: 3: J0 J2"_s;
        QTest::newRow("no number, no bench") << QStringList{u"x"_s, u""_s, u"2.0"_s, u"2"_s} << u"1: 2: J3"_s;
        QTest::newRow("zero and below") << QStringList{u"0"_s, u"-1"_s, u"1"_s} << u"1: J2"_s;
        QTest::newRow("blanks do no harm") << QStringList{u" 2"_s} << u"1: 2: J0"_s;
    }
    void benches()
    {
        QFETCH(QStringList, benches);
        StubProvider testSystem, duts;
        for (const QString &bench : std::as_const(benches))
            add(duts, u"J%1"_s.arg(duts.components.size()), u"CompType=DUT"_s)->properties.insert(u"Bench"_s, bench);
        EDAApplicationIniGenerator generator(&testSystem, &duts);
        const QString ini = applicationIni(generator);
        QStringList found;
        for (const QString &table : ini.split(u"[io_channel->ROUTE"_s).mid(1)) {
            found.append(table.section(u']', 0, 0) + u':');
            for (const QString &line : table.split(u'\n').filter(u"Reference"_s))
                found.append(line.section(u' ', -1));
        }
        QTEST(found.join(u' '), "expected");
        for (qsizetype bench = 1; bench <= ini.count(u"[io_channel"_s); ++bench) {
            const QString name = u"DUT%1"_s.arg(bench == 1 ? QString() : QString::number(bench));
            QVERIFY(ini.contains(u"\n%1=bench->%1\n"_s.arg(name)));
            QVERIFY(ini.contains(u"\n[bench->%1]\nAppChannelTable=io_channel->ROUTE%2\n\n[io_channel->ROUTE%2]\n"_s.arg(
                name, QString::number(bench))));
        }
        generator.setComponentTypesDut({u"Board"_s});
        QVERIFY(!applicationIni(generator).contains(u"Reference J"_s));
    }
};

VELK_TEST(IniGeneratorTest)

#include "IniGeneratorTest.moc"
