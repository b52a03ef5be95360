#include "tests/support/StubProvider.h"
#include "tests/support/TestRegistry.h"

#include <velk/ini/EDAApplicationIniGenerator.h>
#include <velk/ini/EDAPhysicalIniGenerator.h>
#include <velk/model/EDAException.h>

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

/// With a null at the front of each list.
class ProviderWithNulls : public StubProvider
{
public:
    QList<QSharedPointer<EDAComponent>> getComponents() const override
    {
        return QList<QSharedPointer<EDAComponent>>{{}} + components;
    }
    QSharedPointer<EDAPart> getPartByName(const QString &name) const override
    {
        const auto part = StubProvider::getPartByName(name)->clone();
        part->pins.prepend({});
        return part;
    }
};

class ThrowingProvider : public StubProvider
{
public:
    QList<QSharedPointer<EDAComponent>> getComponents() const override { throw EDAException(u"gone"_s); }
};

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

    void passesOverNulls()
    {
        ProviderWithNulls netlist;
        add(netlist, u"U1"_s, u"CompType=Source Group=G"_s);
        add(netlist, u"J1"_s, u"CompType=Dut Bench=1"_s);
        QCOMPARE(physicalIni(EDAPhysicalIniGenerator(&netlist)), u"[device->U1]\nCompType=Source\nGroup=G\n"_s);
        QCOMPARE(applicationIni(EDAApplicationIniGenerator(&netlist, &netlist)).section(u"[io_channel->ROUTE1]\n"_s, 1),
                 u"; Type Dut, Reference J1\n.A=!A\n.B=!B\n; Type Source, Reference U1\n-No.A=U1!A\n-No.B=U1!B\n"
                 "; Type Source, Group G\nG.A=G!A\nG.B=G!B\n"_s);
    }

    void exceptionsLeaveDevicesAsTheyWere()
    {
        ThrowingProvider broken;
        for (const bool isOpen : {false, true}) {
            QBuffer buffer;
            QVERIFY(!isOpen || buffer.open(QIODevice::WriteOnly));
            QVERIFY_THROWS_EXCEPTION(EDAException, EDAPhysicalIniGenerator(&broken).generate(&buffer));
            QCOMPARE(buffer.isOpen(), isOpen);
            QVERIFY_THROWS_EXCEPTION(EDAException,
                                     EDAApplicationIniGenerator(&broken, &broken).generate(&buffer, {}, {}));
            QCOMPARE(buffer.isOpen(), isOpen);
        }
    }
};

VELK_TEST(IniGeneratorTest)

#include "IniGeneratorTest.moc"
