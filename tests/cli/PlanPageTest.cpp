#include "cli/formats/html/PlanPage.h"
#include "tests/support/PageData.h"
#include "tests/support/RelayText.h"
#include "tests/support/TestRegistry.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace Velk;
using namespace VelkCli;

namespace {

/// U1.1 and J1.1 meet over K1, whose middle pin lies on no net, and R1; U1.2 and J1.2 lie on one net. C and C2 share a
/// pin, K2 and K3 are one relay, K4 is unknown.
const QString boardText = u"U1 Source 1=HI,2,3;J1 DUT 1,2=<b>,3;K1 Relay 1,2,3 Positions=/_1-2_2-3_/_loop:_1-3;"
                          "K2 Relay 1,2 Gang=G;K3 Relay 1,2 Gang=G;K4 Relay 1,2,3;R1 Resistor 1,2;R2 Resistor 1,2;"
                          "A: U1/1 K1/1 R2/1 K4/1;B: K1/3 R1/1;C: R1/2 J1/1 K2/1;C2: J1/1 K3/1;D: U1/2 J1/2;"
                          "E: J1/3 R2/2 K2/2;F: U1/3 K3/2"_s;

struct SwitchBoard : StubProvider
{
    SwitchBoard()
    {
        for (const QString &line : boardText.split(u';'))
            addLine(line, *this);
    }
};

/// Plans on the board, made by hand.
struct BoardPlans
{
    BoardPlans()
        : netlist({&board}, {})
        , report{netlist, SwitchingModel(netlist), PinNames(netlist), {u"a.net"_s}, PlanAim::FewestAway, {}}
    {
    }

    InterfacePin pin(const QString &name) const
    {
        const QString ref = name.section(u'/', 0, 0) + u"#1"_s;
        const QString number = name.section(u'/', 1);
        return {ref, number, report.model.netOf(ref, number)};
    }
    int component(const QString &ref) const { return report.model.componentOf(ref); }

    /// Two connections, each a group.
    PlanStep step(PlanResult result) const
    {
        PlanStep step{u"</script>"_s,
                      {{pin(u"U1/1"_s), pin(u"J1/1"_s)}, {pin(u"U1/2"_s), pin(u"J1/2"_s)}},
                      {0, 2},
                      {u"t.csv:2"_s, u"t.csv:4"_s},
                      {}};
        step.planned.plan.result = result;
        return step;
    }

    /// The first connection takes a way through R1, the other one none.
    PlanStep plannedStep() const
    {
        PlanStep planned = step(PlanResult::Optimal);
        auto &[plan, ways, change] = planned.planned;
        const int k1 = component(u"K1#1"_s);
        const int gang1 = report.model.gangOf(k1);
        const int gang2 = report.model.gangOf(component(u"K2#1"_s));
        const int a = pin(u"U1/1"_s).net;
        const int unnamed = pin(u"K1/2"_s).net;
        const int b = pin(u"R1/1"_s).net;
        const int c = pin(u"J1/1"_s).net;
        const int d = pin(u"U1/2"_s).net;
        const int e = pin(u"J1/3"_s).net;
        const QList<InterfacePin> touching{pin(u"J1/3"_s), pin(u"U1/3"_s)};
        plan.positions = std::vector<int>(static_cast<std::size_t>(report.model.gangCount()), 0);
        plan.positions[static_cast<std::size_t>(gang1)] = plan.positions[static_cast<std::size_t>(gang2)] = 1;
        plan.groups = {{{0}, {pin(u"J1/1"_s), pin(u"U1/1"_s)}, {0}, {a, unnamed, b, c, e}, {pin(u"J1/3"_s)}},
                       {{1}, {pin(u"J1/2"_s), pin(u"U1/2"_s)}, {}, {d}, {}}};
        plan.couplings = {{{0, 1}, {pin(u"U1/3"_s)}, {1}}};
        plan.alsoConnected = {touching};
        plan.unknown = {component(u"K4#1"_s)};
        ways = {
            {{{a, k1, u"1"_s, u"2"_s}, {unnamed, k1, u"2"_s, u"3"_s}, {b, component(u"R1#1"_s), u"1"_s, u"2"_s}}, c},
            {{}, d}};
        change = {{gang1}, {gang1, gang2}, {{true, touching, {gang2}}}};
        return planned;
    }

    QJsonObject data(const QList<PlanStep> &steps)
    {
        report.steps = steps;
        return dataOf(plansToPage(report));
    }

    SwitchBoard board;
    MultipleEDAProvider netlist;
    PlanReport report;
};

/// What the page says, with the names of what it refers to by places.
class PageText
{
public:
    explicit PageText(const QJsonObject &pageData)
        : data(pageData)
    {
    }

    /// A row of the table, or several with "+" in between; without a table the number.
    QString name(const QJsonValue &place, const QString &table = {}) const
    {
        QStringList texts;
        for (const auto each : place.toArray())
            texts.append(name(each, table));
        if (place.isArray())
            return texts.join(u'+');
        const QJsonValue row = data[table][place.toInt(-1)];
        const QMap<QString, QString> keys{{u"components"_s, u"ref"_s}, {u"pins"_s, u"text"_s}, {u"nets"_s, u"name"_s}};
        return table.isEmpty() ? QString::number(place.toInt(-1)) : row[keys.value(table)].toString(u"nothing"_s);
    }
    QString ref(const QJsonValue &place) const { return name(place, u"components"_s); }
    QString pin(const QJsonValue &place) const { return name(place, u"pins"_s); }
    QString net(const QJsonValue &place) const { return name(place, u"nets"_s); }

    QStringList lines(const QJsonValue &step) const
    {
        QStringList lines{u"%1: %2"_s.arg(step[u"name"_s].toString(), step[u"cost"_s].toString())};
        for (const auto wanted : step[u"wanted"_s].toArray())
            lines.append(
                u"%1 to %2 (%3)"_s.arg(pin(wanted[u"from"_s]), pin(wanted[u"to"_s]), wanted[u"place"_s].toString()));
        for (const auto relay : step[u"relays"_s].toArray())
            lines.append(u"%1, set as %2, in %3"_s.arg(ref(relay[u"component"_s]), relay[u"setting"_s].toString(),
                                                       name(relay[u"sets"_s])));
        for (const auto group : step[u"groups"_s].toArray()) {
            lines.append(u"group of %1 through %2 on %3 also %4"_s.arg(pin(group[u"pins"_s]), ref(group[u"through"_s]),
                                                                       net(group[u"nets"_s]),
                                                                       pin(group[u"sideConnections"_s])));
            for (const auto way : group[u"ways"_s].toArray())
                lines.append(u"way %1:%2"_s.arg(name(way[u"connection"_s]), wayText(way[u"crossings"_s].toArray())));
        }
        for (const auto coupling : step[u"couplings"_s].toArray())
            lines.append(u"coupled %1 and %2 by %3"_s.arg(name(coupling[u"groups"_s]), pin(coupling[u"pins"_s]),
                                                          ref(coupling[u"passives"_s])));
        lines.append(u"connected %1; unknown %2; to rest %3; to set %4"_s.arg(
            pin(step[u"alsoConnected"_s]), ref(step[u"unknown"_s]), ref(step[u"toRest"_s]), ref(step[u"toSet"_s])));
        for (const auto transient : step[u"transients"_s].toArray())
            lines.append(u"touch %1 %2 by %3"_s.arg(transient[u"isOnTheWayToRest"_s].toBool() ? u"first"_s : u"then"_s,
                                                    pin(transient[u"pins"_s]), ref(transient[u"gangs"_s])));
        return lines;
    }

private:
    QString wayText(const QJsonArray &crossings) const
    {
        QString text;
        for (const auto place : crossings) {
            const QJsonValue crossing = data[u"crossings"_s][place.toInt()];
            const QString number = u"number"_s;
            text += u" [%1] %2 %3-%4 at %5 [%6]"_s.arg(
                net(crossing[u"from"_s]), ref(crossing[u"component"_s]), crossing[u"entry"_s][number].toString(),
                crossing[u"exit"_s][number].toString(), name(crossing[u"position"_s]), net(crossing[u"to"_s]));
        }
        return text;
    }

    const QJsonObject data;
};
}

class PlanPageTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void showsPlan()
    {
        BoardPlans plans;
        const auto data = plans.data({plans.plannedStep()});
        QCOMPARE(data[u"steps"_s][0][u"result"_s].toString(), u"optimal"_s);
        QCOMPARE(data[u"steps"_s][0][u"gangsAway"_s].toInt(), 2);
        QCOMPARE(PageText(data).lines(data[u"steps"_s][0]).join(u'\n'),
                 u"</script>: 2 relays, 1 passive component, proven to be the fewest\n"
                 "U1#1.HI to J1#1.1 (t.csv:2)\n"
                 "U1#1.2 to J1#1.<b> (t.csv:4)\n"
                 "K1#1, set as K1#1=1, in 0\n"
                 "K2#1, set as K2#1, in 0\n"
                 "K3#1, set as K3#1, in 0\n"
                 "group of J1#1.1+U1#1.HI through R1#1 on A#1+B#1+C#1+C2#1+E#1 also J1#1.3\n"
                 "way 0: [A#1] K1#1 1-2 at 1 [] [] K1#1 2-3 at 1 [B#1] [B#1] R1#1 1-2 at -1 [C#1]\n"
                 "group of J1#1.<b>+U1#1.2 through  on D#1 also \n"
                 "way 1:\n"
                 "coupled 0+1 and U1#1.3 by R2#1\n"
                 "connected J1#1.3+U1#1.3; unknown K4#1; to rest K1#1; to set K1#1+K2#1+K3#1\n"
                 "touch first J1#1.3+U1#1.3 by K2#1+K3#1"_s);
    }

    void tellsWhyThereIsNoPlan()
    {
        BoardPlans plans;
        PlanStep impossible = plans.step(PlanResult::Impossible);
        impossible.connections +=
            {{plans.pin(u"J1/1"_s), plans.pin(u"U1/3"_s)}, {plans.pin(u"J1/3"_s), plans.pin(u"J1/1"_s)}};
        impossible.places += {u"t.csv:5"_s, u"t.csv:6"_s};
        impossible.planned.plan.conflict = {1, 2, 3};
        impossible.planned.plan.bottleneck = {plans.pin(u"J1/1"_s).net, plans.pin(u"U1/2"_s).net};
        const auto data = plans.data({impossible, plans.step(PlanResult::Unknown)});
        const PageText text(data);
        const auto steps = data[u"steps"_s].toArray();
        QCOMPARE(text.name(steps[0][u"conflict"_s][0]), u"1"_s);
        QCOMPARE(text.name(steps[0][u"conflict"_s][1]), u"2+3"_s);
        QCOMPARE(text.net(steps[0][u"bottleneck"_s][0]), u"C#1+C2#1"_s);
        QCOMPARE(text.net(steps[0][u"bottleneck"_s][1]), u"D#1"_s);
        QVERIFY(!steps[0].toObject().contains(u"groups"_s));
        QCOMPARE(steps[1][u"result"_s].toString(), u"unknown"_s);
        QCOMPARE(steps[1].toObject().keys(), (QStringList{u"name"_s, u"result"_s, u"wanted"_s}));
    }
};

VELK_TEST(PlanPageTest)

#include "PlanPageTest.moc"
