#include "tests/support/StubProvider.h"
#include "tests/support/TestRegistry.h"

#include <velk/naming/NetlistSelection.h>
#include <velk/naming/PinSearch.h>
#include <velk/naming/References.h>

#include <QTest>

using namespace Qt::StringLiterals;
using namespace Velk;

class PinSearchTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void finds_data()
    {
        QTest::addColumn<PinDescription>("wanted");
        QTest::addColumn<QString>("expected");
        const QMap<QString, QString> relay{{u"CompType"_s, u"Relay"_s}};
        QTest::newRow("the first one that has the pin")
            << PinDescription{relay, {}, u"3"_s} << u"K2#1.3, not K1#1 K1#2"_s;
        QTest::newRow("the first of several") << PinDescription{relay, {}, u"1"_s} << u"K1#1.1, not K2#1 K1#2"_s;
        QTest::newRow("exact reference") << PinDescription{{}, u"K1#2"_s, u"2"_s} << u"K1#2.2, not"_s;
        QTest::newRow("reference as drawn") << PinDescription{relay, u"K2"_s, u"COM"_s} << u"K2#1.1, not 2"_s;
        QTest::newRow("number before name") << PinDescription{{}, u"K2"_s, u"3"_s} << u"K2#1.3, not"_s;
        QTest::newRow("reference of two")
            << PinDescription{{}, u"K1"_s, u"1"_s} << u"1: K1: several netlists have it: K1#1, K1#2"_s;
        QTest::newRow("no reference") << PinDescription{{}, u"K3"_s, u"1"_s}
                                      << u"1: K3: no component has this reference; there are K1#1, K2#1, K1#2, X1#2"_s;
        QTest::newRow("no pin") << PinDescription{{}, u"K2"_s, u"4"_s}
                                << u"2: no pin '4' on K2#1; its pins: 3, COM (1), COM (2)"_s;
        QTest::newRow("no part") << PinDescription{{}, u"X1"_s, u"1"_s}
                                 << u"No part found for name 'PX1#2' of component 'X1#2'"_s;
        QTest::newRow("no such properties")
            << PinDescription{{{u"CompType"_s, u"relay"_s}}, {}, u"1"_s}
            << u"0: No component matching properties 'CompType=relay' found; no component has CompType=relay; values of CompType: Relay, Fuse (capitals count)"_s;
    }
    void finds()
    {
        QFETCH(PinDescription, wanted);
        QString text;
        try {
            const auto choice = findPin(netlist(), wanted);
            const QStringList others = refsOf(choice.otherComponents) + choice.otherPins;
            text = u"%1.%2, not %3"_s.arg(choice.component->ref, choice.pin->number, others.join(u' ')).trimmed();
        } catch (const NameNotFoundException &exception) {
            text = u"%1: %2"_s.arg(static_cast<int>(exception.kind())).arg(exception.message());
        } catch (const EDAException &exception) {
            text = exception.message();
        }
        QTEST(text, "expected");
    }

    void nothingIsFoundInNothing()
    {
        const StubProvider empty;
        QVERIFY_THROWS_EXCEPTION(NameNotFoundException, findPin(empty, {}));
        QCOMPARE(NetlistSelection(empty, {}).whyEmpty(), u"none exists"_s);
    }

private:
    static StubProvider netlist()
    {
        StubProvider netlist;
        netlist.components.append(nullptr);
        netlist.add(u"K1#1"_s, u"Relay"_s, {u"1"_s, u"2"_s});
        netlist.add(u"K2#1"_s, u"Relay"_s, {u"1=COM"_s, u"2=COM"_s, u"3"_s});
        netlist.add(u"K1#2"_s, u"Relay"_s, {u"1"_s, u"2"_s});
        netlist.add(u"X1#2"_s, u"Fuse"_s, {});
        netlist.parts.removeLast();
        return netlist;
    }
};

VELK_TEST(PinSearchTest)

#include "PinSearchTest.moc"
