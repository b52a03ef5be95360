#include "tests/support/PlanningText.h"
#include "tests/support/TestRegistry.h"
#include "tests/support/TextTable.h"

#include <velkplanning/PlanCheck.h>

#include <QTest>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace {

QString numbersText(const std::vector<int> &numbers)
{
    QStringList texts;
    for (const int number : numbers)
        texts.append(QString::number(number));
    return texts.join(u' ');
}

QString passivesText(const std::vector<int> &passives, const SwitchingModel &model)
{
    QStringList refs;
    for (const int passive : passives)
        refs.append(model.passives()[static_cast<std::size_t>(passive)].ref);
    return refs.join(u' ');
}

QString groupText(const PlannedGroup &group, const SwitchingModel &model)
{
    QStringList nets;
    for (const int net : group.nets)
        nets.append(model.netNames(net).join(u'+'));
    QString text = u"%1: %2 in %3"_s.arg(numbersText(group.connections), toText(group.pins), nets.join(u' '));
    if (!group.through.empty())
        text += u" through "_s + passivesText(group.through, model);
    if (!group.sideConnections.isEmpty())
        text += u" beside "_s + toText(group.sideConnections);
    return text;
}

QString toText(const ConnectionPlan &plan, const SwitchingModel &model)
{
    QStringList lines;
    for (const PlannedGroup &group : plan.groups)
        lines.append(groupText(group, model));
    for (const PlannedCoupling &coupling : plan.couplings)
        lines.append(u"coupled %1 [%2] [%3]"_s.arg(numbersText(coupling.groups), toText(coupling.pins),
                                                   passivesText(coupling.passives, model)));
    for (const auto &pins : plan.alsoConnected)
        lines.append(u"also "_s + toText(pins));
    for (const int component : plan.unknown)
        lines.append(u"unknown "_s + model.ref(component));
    return lines.join(u'\n');
}
}

class PlanCheckTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void checks_data() { addCasesFrom("plan_checks.txt"); }
    void checks()
    {
        QFETCH(QString, input);
        const PlanningText text(input);
        const SwitchingModel model = text.model();
        const ConnectionRequest request = text.request(model);
        const Connectivity rest(model);
        const PlanCheck check(request, rest);
        const auto groupCount = groupsOf(request.connections, model.netCount()).size();
        const ConnectionPlan plan = check.planWith(text.state(model).positions, text.through(model, groupCount));
        QCOMPARE(plan.result, PlanResult::Feasible);
        QCOMPARE(plan.positions, text.state(model).positions);
        QStringList lines{toText(plan, model)};
        for (const QString &fault : check.faultsOf(plan, text.before(model).positions))
            lines.append(u"! "_s + fault);
        lines.removeAll(QString());
        QTEST(lines.join(u'\n'), "expected");
    }
};

VELK_TEST(PlanCheckTest)

#include "PlanCheckTest.moc"
