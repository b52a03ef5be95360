#include "tests/support/RandomSystems.h"
#include "tests/support/TestRegistry.h"
#include "tests/support/TextTable.h"

#include <velk/naming/NetlistSelection.h>
#include <velk/naming/PinSearch.h>
#include <velk/naming/References.h>
#include <velk/provider/MultipleEDAProvider.h>

#include <QTest>

using namespace Qt::StringLiterals;
using namespace Velk;

class PinSearchTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void finds_data() { addRowsFrom("pin_searches.txt", {"property", "ref", "pin", "expected"}); }
    void finds()
    {
        QFETCH(QString, property);
        QFETCH(QString, ref);
        QFETCH(QString, pin);
        PinDescription wanted{{}, ref, pin};
        if (!property.isEmpty())
            wanted.properties = {{property.section(u'=', 0, 0), property.section(u'=', 1)}};
        const auto netlist = systemOf(u"K1#1 Relay 1,2\nK2#1 Relay 1=COM,2=COM,3\nK1#2 Relay 1,2\nX1#2 Fuse 1"_s);
        netlist->components.prepend(nullptr);
        netlist->parts.removeLast();
        QString text;
        try {
            const auto choice = findPin(*netlist, wanted);
            const QStringList others = refsOf(choice.otherComponents) + choice.otherPins;
            text = u"%1.%2, not %3"_s.arg(choice.component->ref, choice.pin->number, others.join(u' ')).trimmed();
        } catch (const NameNotFoundException &exception) {
            text = u"%1: %2"_s.arg(static_cast<int>(exception.kind())).arg(exception.message());
        } catch (const EDAException &exception) {
            text = exception.message();
        }
        QTEST(text, "expected");
    }

    void findsNets_data() { addRowsFrom("net_names.txt", {"name", "expected"}); }
    void findsNets()
    {
        QFETCH(QString, name);
        const auto boards = systemsOf(u"X1 Plug 1,2 X\nA: X1/1\nB: K1/1\nD: K1/2\nD: K1/3\nE: X1/2\n--\n"
                                      "X1 Plug 1,2 X\nB: X1/1\nC: K1/1\nE: X1/2"_s);
        const MultipleEDAProvider joined({boards[0].get(), boards[1].get()}, {u"Plug"_s});
        QStringList names;
        try {
            for (const auto &net : findNets(joined, name))
                names.append(net->name);
        } catch (const NameNotFoundException &exception) {
            QVERIFY(exception.kind() == NameNotFoundException::Kind::Net);
            names.append(exception.message());
        }
        QTEST(names.join(u' '), "expected");
    }

    void nothingIsFoundInNothing()
    {
        const StubProvider empty;
        QVERIFY_THROWS_EXCEPTION(NameNotFoundException, findPin(empty, {}));
        QVERIFY_THROWS_EXCEPTION(NameNotFoundException, findNets(empty, {}));
        QCOMPARE(NetlistSelection(empty, {}).whyEmpty(), u"none exists"_s);
    }

    void numbersOfBoards()
    {
        const QList<std::tuple<QString, QString, int>> names{{u"K3#2"_s, u"K3"_s, 2},   {u"A#1+B#12"_s, u"A#1+B"_s, 12},
                                                             {u"K3"_s, u"K3"_s, 0},     {u"42"_s, u"42"_s, 0},
                                                             {u"K#a"_s, u"K#a"_s, 0},   {u"K#"_s, u"K#"_s, 0},
                                                             {u"K#-3"_s, u"K#-3"_s, 0}, {QString(), QString(), 0}};
        for (const auto &[name, drawn, number] : names) {
            QCOMPARE(drawnName(name), drawn);
            QCOMPARE(netlistOf(name), number);
        }
    }
};

VELK_TEST(PinSearchTest)

#include "PinSearchTest.moc"
