#include "tests/support/PlanningText.h"
#include "tests/support/TestRegistry.h"
#include "tests/support/TextTable.h"

#include <velkplanning/ConnectionGroups.h>
#include <velkplanning/ConnectionWays.h>

#include <QTest>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace {

/// "A K1 1-2 B".
QString toText(const ConnectionWay &way, const SwitchingModel &model)
{
    QString text;
    for (const WayStep &step : way.steps)
        text += u"%1 %2 %3-%4 "_s.arg(model.netNames(step.net).join(u'+'), model.ref(step.component), step.pinIn,
                                      step.pinOut);
    return text + model.netNames(way.lastNet).join(u'+');
}
}

class ConnectionWaysTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void ways_data() { addCasesFrom("connection_ways.txt"); }
    void ways()
    {
        QFETCH(QString, input);
        const PlanningText text(input);
        const SwitchingModel model = text.model();
        const ConnectionRequest request = text.request(model);
        ConnectionPlan plan{PlanResult::Optimal, text.state(model).positions, {}, {}, {}, {}, {}, {}};
        const auto groupCount = groupsOf(request.connections, model.netCount()).size();
        for (const std::vector<int> &passives : text.through(model, groupCount))
            plan.groups.append({{}, {}, passives, {}, {}});
        QStringList lines;
        for (const ConnectionWay &way : waysOf(model, request, plan))
            lines.append(toText(way, model));
        QTEST(lines.join(u'\n'), "expected");
    }

    void noWayWithoutAPlan()
    {
        const PlanningText text(u"K1 Relay 1,2\nA: K1/1\nB: K1/2\nconnect K1/1 K1/2"_s);
        const SwitchingModel model = text.model();
        const ConnectionPlan none{PlanResult::Impossible, {}, {}, {}, {}, {}, {0}, {}};
        QVERIFY(waysOf(model, text.request(model), none).isEmpty());
    }
};

VELK_TEST(ConnectionWaysTest)

#include "ConnectionWaysTest.moc"
