#include "tests/support/PlanningText.h"
#include "tests/support/TestRegistry.h"
#include "tests/support/TextTable.h"

#include <velkplanning/StateChange.h>

#include <QTest>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace {

QString gangsText(const std::vector<int> &gangs, const SwitchingModel &model)
{
    QStringList texts;
    for (const int gang : gangs)
        texts.append(model.gang(gang).components.join(u'+'));
    return texts.join(u' ');
}

QString toText(const StateChange &change, const SwitchingModel &model)
{
    QStringList lines{u"rest: %1"_s.arg(gangsText(change.toRest, model)).trimmed(),
                      u"set: %1"_s.arg(gangsText(change.toSet, model)).trimmed()};
    for (const Transient &transient : change.transients)
        lines.append(u"%1 ties %2 by %3"_s
                         .arg(transient.isOnTheWayToRest ? u"rest"_s : u"set"_s, toText(transient.pins),
                              gangsText(transient.gangs, model))
                         .trimmed());
    return lines.join(u'\n');
}
}

class StateChangeTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void changes_data() { addCasesFrom("state_changes.txt"); }
    void changes()
    {
        QFETCH(QString, input);
        const PlanningText text(input);
        const SwitchingModel model = text.model();
        QTEST(toText(changeBetween(model, text.before(model), text.state(model)), model), "expected");
    }
};

VELK_TEST(StateChangeTest)

#include "StateChangeTest.moc"
