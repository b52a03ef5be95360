#include "cli/formats/PlanText.h"
#include "cli/formats/PlanJson.h"
#include "tests/support/TestRegistry.h"

#include <velk/provider/MultipleEDAProvider.h>

#include <QTest>

using namespace Qt::StringLiterals;
using namespace Velk;
using namespace VelkCli;

/// What is known of a plan; sessions show the rest.
class PlanTextTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void resultInWords_data()
    {
        QTest::addColumn<PlanResult>("result");
        QTest::addColumn<PlanAim>("aim");
        QTest::addColumn<QList<int>>("positions");
        QTest::addColumn<QString>("expected");
        QTest::newRow("proven") << PlanResult::Optimal << PlanAim::FewestAway << QList{0, 1, 2}
                                << u"2 relays, 2 passive components, proven to be the fewest"_s;
        QTest::newRow("not proven") << PlanResult::Feasible << PlanAim::FewestAway << QList{0, 1, 0}
                                    << u"1 relay, 2 passive components; it is not known whether fewer do, since the "
                                       "time was up"_s;
        QTest::newRow("a relay that goes from one position to another changes once")
            << PlanResult::Optimal << PlanAim::FewestChanges << QList{0, 1, 2}
            << u"2 changes, 2 relays, 2 passive components, proven to be the fewest"_s;
        QTest::newRow("not found") << PlanResult::Unknown << PlanAim::FewestAway << QList<int>()
                                   << u"it is not known whether there is a plan, since the time was up"_s;
    }
    void resultInWords()
    {
        QFETCH(PlanResult, result);
        QFETCH(PlanAim, aim);
        QFETCH(QList<int>, positions);
        const MultipleEDAProvider netlist({}, {});
        const PlanReport report{netlist, SwitchingModel(netlist), PinNames(netlist), {}, aim, {}};
        PlanStep step;
        auto &[plan, ways, change] = step.planned;
        plan.result = result;
        plan.positions = {positions.cbegin(), positions.cend()};
        plan.groups = {{{0}, {}, {3}, {}, {}}, {{1}, {}, {5}, {}, {}}};
        change = {{0, 2}, {2}, {}};
        QTEST(planResultText(report, step), "expected");
    }

    void resultInJson()
    {
        const MultipleEDAProvider netlist({}, {});
        const PlanReport report{netlist, SwitchingModel(netlist), PinNames(netlist), {}, PlanAim::FewestAway, {}};
        PlanStep step{u"a"_s, {}, {}, {}, {{PlanResult::Unknown, {}, {}, {}, {}, {}, {}, {}}, {}, {}}};
        QCOMPARE(planStepToJson(report, step), (QJsonObject{{u"step"_s, u"a"_s}, {u"result"_s, u"unknown"_s}}));
        step.planned.plan.result = PlanResult::Feasible;
        QCOMPARE(planStepToJson(report, step).value(u"result"_s), QJsonValue(u"feasible"_s));
        QCOMPARE(planStepToJson(report, step).size(), 10);
    }
};

VELK_TEST(PlanTextTest)

#include "PlanTextTest.moc"
