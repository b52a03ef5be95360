#include "cli/formats/PlanText.h"

#include "cli/formats/Count.h"
#include "cli/formats/ModelNames.h"
#include "cli/formats/PaintedNames.h"
#include "cli/formats/RelayText.h"
#include "cli/terminal/Terminal.h"

#include <algorithm>
#include <iterator>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

qsizetype countMovedGangs(const StateChange &change)
{
    std::vector<int> moved;
    std::set_union(change.toRest.begin(), change.toRest.end(), change.toSet.begin(), change.toSet.end(),
                   std::back_inserter(moved));
    return static_cast<qsizetype>(moved.size());
}

/// What the plan has as little of as can be, the most important first; nothing where that is nothing.
QStringList costTexts(const PlanReport &report, const PlannedStep &planned)
{
    const auto &positions = planned.plan.positions;
    const qsizetype relays =
        std::count_if(positions.begin(), positions.end(), [](int position) { return position > 0; });
    qsizetype passives = 0;
    for (const PlannedGroup &group : planned.plan.groups)
        passives += static_cast<qsizetype>(group.through.size());
    QStringList texts;
    if (report.aim == PlanAim::FewestChanges)
        texts.append(countOf(countMovedGangs(planned.change), u"change"_s));
    if (relays > 0)
        texts.append(countOf(relays, u"relay"_s));
    if (passives > 0)
        texts.append(countOf(passives, u"passive component"_s));
    return texts;
}

/// A step in lines.
class PlanText
{
public:
    PlanText(const PlanReport &planReport, const PlanStep &planStep, const Colour &textColour)
        : report(planReport)
        , model(planReport.model)
        , step(planStep)
        , plan(planStep.planned.plan)
        , names(planReport.pinNames, textColour)
    {
    }

    QString text() const
    {
        const QString heading = names.heading(u"Step "_s + step.name);
        QStringList lines{u"%1: %2"_s.arg(heading, planResultText(report, step))};
        if (step.hasPlan())
            lines += settingLines() + groupLines() + remarkLines();
        else if (plan.result == PlanResult::Impossible)
            lines += conflictLines();
        return lines.join(u"\n  "_s) + u'\n';
    }

private:
    /// What moves from the step before, in its order, and what stays.
    QStringList settingLines() const
    {
        const StateChange &change = step.planned.change;
        QStringList lines;
        if (!change.toRest.empty())
            lines.append(u"to rest: "_s + names.refs(refsOfGangs(model, change.toRest)));
        if (!change.toSet.empty())
            lines.append(u"to set: "_s + names.refs(settingsOf(change.toSet)));
        const auto staying = stillSet();
        if (!staying.empty())
            lines.append(u"still set: "_s + names.refs(settingsOf(staying)));
        return lines;
    }

    std::vector<int> stillSet() const
    {
        const std::vector<int> &moved = step.planned.change.toSet;
        std::vector<int> gangs;
        for (int gang = 0; gang < model.gangCount(); ++gang) {
            if (positionOf(gang) > 0 && !std::binary_search(moved.begin(), moved.end(), gang))
                gangs.push_back(gang);
        }
        return gangs;
    }

    QStringList settingsOf(const std::vector<int> &gangs) const
    {
        QStringList texts;
        for (const QString &ref : refsOfGangs(model, gangs)) {
            const int component = model.componentOf(ref);
            texts.append(settingText(model, component, positionOf(model.gangOf(component))));
        }
        return texts;
    }

    int positionOf(int gang) const { return plan.positions[static_cast<std::size_t>(gang)]; }

    /// Each group has a number in front of its first line.
    QStringList groupLines() const
    {
        QStringList lines;
        for (qsizetype i = 0; i < plan.groups.size(); ++i) {
            const QString number = QString::number(i + 1) + u". "_s;
            const QString indentation(number.size(), u' ');
            const QStringList texts = linesOf(plan.groups.at(i));
            lines.append(number + texts.first());
            for (const QString &text : texts.sliced(1))
                lines.append(indentation + text);
        }
        return lines;
    }

    QStringList linesOf(const PlannedGroup &group) const
    {
        QStringList lines;
        for (const int connection : group.connections)
            lines.append(wayText(connection));
        if (!group.through.empty())
            lines.append(u"through "_s + names.refs(refsOfPassives(model, group.through)));
        if (!group.sideConnections.isEmpty())
            lines.append(u"also connects "_s + names.pins(group.sideConnections));
        return lines;
    }

    QString wayText(int connection) const
    {
        const auto &[from, to] = step.connections.at(connection);
        QStringList stations{names.end(from)};
        for (const WayStep &crossed : step.planned.ways.at(connection).steps)
            stations.append(crossingText(crossed.component));
        stations.append(names.end(to));
        return stations.join(u" -> "_s);
    }

    QString crossingText(int component) const
    {
        const int gang = model.gangOf(component);
        if (gang == SwitchingModel::none)
            return names.ref(model.ref(component));
        const int position = positionOf(gang);
        return position == 0 ? names.ref(model.ref(component)) + u" (rest)"_s
                             : names.ref(settingText(model, component, position));
    }

    QStringList remarkLines() const
    {
        QStringList lines;
        for (const Transient &transient : step.planned.change.transients)
            lines.append(u"%1 while %2 %3: %4"_s.arg(
                names.problem(u"may touch"_s), transient.isOnTheWayToRest ? u"putting to rest"_s : u"setting"_s,
                names.refs(refsOfGangs(model, transient.gangs)), names.pins(transient.pins)));
        for (const PlannedCoupling &coupling : plan.couplings)
            lines.append(u"%1 by %2: %3"_s.arg(names.problem(u"coupled"_s),
                                               names.refs(refsOfPassives(model, coupling.passives)),
                                               coupledText(coupling)));
        for (const auto &pins : plan.alsoConnected)
            lines.append(u"%1: %2"_s.arg(names.problem(u"also connected"_s), names.pins(pins)));
        if (!plan.unknown.empty())
            lines.append(u"%1: %2"_s.arg(names.problem(u"touched, but positions not known"_s),
                                         names.refs(refsOfComponents(model, plan.unknown))));
        return lines;
    }

    QString coupledText(const PlannedCoupling &coupling) const
    {
        QStringList texts;
        for (const int group : coupling.groups)
            texts.append(QString::number(group + 1) + u'.');
        if (!coupling.pins.isEmpty())
            texts.append(names.pins(coupling.pins));
        return texts.join(u" | "_s);
    }

    QStringList conflictLines() const
    {
        QStringList lines{plan.conflict.size() == 1 ? u"there is no plan for this connection alone:"_s
                                                    : u"there is a plan without any one of these, but none for all:"_s};
        for (const int connection : plan.conflict) {
            const auto &[from, to] = step.connections.at(connection);
            lines.append(
                u"  %1: %2 to %3"_s.arg(printable(step.places.at(connection)), names.pin(from), names.pin(to)));
        }
        if (!plan.bottleneck.empty())
            lines.append(u"too few lines, since more groups than these need one of them: %1"_s.arg(
                names.refs(namesOfNets(model, plan.bottleneck))));
        return lines;
    }

    const PlanReport &report;
    const SwitchingModel &model;
    const PlanStep &step;
    const ConnectionPlan &plan;
    const PaintedNames names;
};
}

QString planResultText(const PlanReport &report, const PlanStep &step)
{
    const PlanResult result = step.planned.plan.result;
    if (result == PlanResult::Impossible)
        return u"impossible, which is proven"_s;
    if (result == PlanResult::Unknown)
        return u"it is not known whether there is a plan, since the time was up"_s;
    const QString costs = costTexts(report, step.planned).join(u", "_s);
    if (costs.isEmpty())
        return u"all relays at rest"_s;
    return costs + (result == PlanResult::Optimal ? u", proven to be the fewest"_s
                                                  : u"; it is not known whether fewer do, since the time was up"_s);
}

QString planStepText(const PlanReport &report, const PlanStep &step, const Colour &colour)
{
    return PlanText(report, step, colour).text();
}
}
