#include "tests/support/RelayText.h"
#include "tests/support/TestRegistry.h"
#include "tests/support/TextTable.h"

#include <velk/switching/SwitchingModel.h>

#include <QTest>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace {

/// Its names, or the pin that it is.
QString netText(const SwitchingModel &model, int net)
{
    if (const QStringList names = model.netNames(net); !names.isEmpty())
        return names.join(u'+');
    for (int component = 0; component < model.componentCount(); ++component) {
        for (const QString &pin : {u"C"_s, u"1"_s, u"2"_s}) {
            if (model.netOf(model.ref(component), pin) == net)
                return u"(%1.%2)"_s.arg(model.ref(component), pin);
        }
    }
    return u"?"_s;
}

QString gangText(const SwitchingModel &model, int number)
{
    const RelayGang &gang = model.gang(number);
    QStringList positions;
    for (int position = 0; position < gang.positionCount; ++position) {
        QStringList contacts;
        for (const NetContact &contact : model.contactsOf(number, position))
            contacts.append(netText(model, contact.net) + u'=' + netText(model, contact.otherNet));
        positions.append(contacts.isEmpty() ? u"-"_s : contacts.join(u' '));
    }
    return u"%1 %2: %3"_s.arg(gang.isUnknown ? u"unknown"_s : u"gang"_s, gang.components.join(u' '),
                              positions.join(u" | "_s));
}

QString toText(const SwitchingModel &model)
{
    QStringList lines;
    for (int net = 0; net < model.netCount(); ++net) {
        if (model.netNames(net).size() != 1)
            lines.append(u"net "_s + model.netNames(net).join(u'+'));
    }
    for (const PassiveComponent &passive : model.passives()) {
        lines.append(u"passive %1:"_s.arg(passive.ref));
        for (const int net : passive.nets)
            lines.last() += u' ' + netText(model, net);
    }
    for (const InterfacePin &pin : model.interfacePins())
        lines.append(u"pin %1.%2: %3"_s.arg(pin.ref, pin.number, netText(model, pin.net)));
    for (int gang = 0; gang < model.gangCount(); ++gang)
        lines.append(gangText(model, gang));
    const QStringList unknown = model.unknownComponents();
    for (const QString &ref : unknown) {
        lines.append(u"touches %1:"_s.arg(ref));
        for (const int net : model.contactNetsOf(model.componentOf(ref)))
            lines.last() += u' ' + netText(model, net);
    }
    const auto contacts = model.relayContacts();
    QStringList neverCrossed;
    for (auto it = contacts->cbegin(); it != contacts->cend(); ++it) {
        if (it->positions.isEmpty())
            neverCrossed.append(it.key());
    }
    neverCrossed.sort();
    if (!neverCrossed.isEmpty())
        lines.append(u"never crossed: "_s + neverCrossed.join(u' '));
    for (const PositionsError &error : model.errors())
        lines.append(error.message());
    return lines.join(u'\n');
}
}

class SwitchingModelTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void models_data() { addCasesFrom("switching_models.txt"); }
    void models()
    {
        QFETCH(QString, input);
        StubProvider netlist;
        for (const QString &line : input.split(u'\n'))
            addLine(line, netlist);
        QTEST(toText(SwitchingModel(netlist)), "expected");
    }

    // Each list replaces the usual one as a whole; what is no more passive is a relay.
    void otherTypes()
    {
        StubProvider netlist;
        for (const QString &line : {u"R1 Resistor 1,2"_s, u"F1 Fuse 1,2"_s, u"K1 Switch 1,2"_s, u"S1 Meter 1"_s,
                                    u"A: R1/1 F1/1 K1/1 S1/1"_s, u"B: R1/2 F1/2 K1/2"_s})
            addLine(line, netlist);
        const SwitchingModel model(netlist, {{u"fuse"_s}, {u"Switch"_s, u"Resistor"_s, u"Fuse"_s}, {u"METER"_s}});
        QCOMPARE(toText(model), u"passive F1: A B\npin S1.1: A\ngang K1: - | A=B\ngang R1: - | A=B"_s);
    }

    void tablesComeInTheirOrder()
    {
        StubProvider netlist;
        addLine(u"K1 Relay 1,2,3"_s, netlist);
        addLine(u"A: K1/1 K1/2"_s, netlist);
        addLine(u"B: K1/3"_s, netlist);
        const RelayTable first(CsvTable("part,positions\nPK2,/ 1-2", u"a"_s));
        const RelayTable second(CsvTable("part,positions\nPK*,/ 1-3", u"b"_s));
        const RelayTable third(CsvTable("part,positions\nPK1,/ 2-3 1-2", u"c"_s));
        QCOMPARE(toText(SwitchingModel(netlist, {}, {first, second, third})), u"gang K1: - | A=B"_s);
    }

    void looksUp()
    {
        StubProvider netlist;
        for (const QString &line : {u"K1 Relay 1,2,A1"_s, u"S1 Source 1"_s, u"A: K1/1 S1/1"_s})
            addLine(line, netlist);
        const SwitchingModel model(netlist);
        QCOMPARE(model.componentOf(u"K2"_s), SwitchingModel::none);
        QCOMPARE(model.role(model.componentOf(u"K1"_s)), SwitchingRole::Relay);
        QCOMPARE(model.gangOf(model.componentOf(u"K1"_s)), 0);
        QCOMPARE(model.gangOf(model.componentOf(u"S1"_s)), SwitchingModel::none);
        QCOMPARE(model.netOf(u"S1"_s, u"1"_s), model.netOf(u"K1"_s, u"1"_s));
        QVERIFY(model.netOf(u"K1"_s, u"A1"_s) != model.netOf(u"K1"_s, u"2"_s));
        QCOMPARE(model.netOf(u"S1"_s, u"2"_s), SwitchingModel::none);
        QCOMPARE(model.netOf(u"S2"_s, u"1"_s), SwitchingModel::none);
        QCOMPARE(model.unknownComponents(), QStringList());
        QStringList pins;
        for (const InterfacePin &pin : model.pinsOf(model.componentOf(u"K1"_s)))
            pins.append(pin.ref + u'.' + pin.number + u' ' + netText(model, pin.net));
        QCOMPARE(pins, QStringList({u"K1.1 A"_s, u"K1.2 (K1.2)"_s, u"K1.A1 ?"_s}));
    }
};

VELK_TEST(SwitchingModelTest)

#include "SwitchingModelTest.moc"
