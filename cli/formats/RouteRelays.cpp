#include "cli/formats/RouteRelays.h"

#include "cli/formats/Json.h"
#include "cli/formats/RelayText.h"

#include <QMap>

#include <set>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

RelayTask taskOf(const std::optional<SwitchingModel> &switching, const TracedStep &step)
{
    if (step.position > 0)
        return RelayTask::Set;
    if (step.position == 0)
        return RelayTask::StayAtRest;
    const bool isRelay =
        switching && switching->role(switching->componentOf(step.component->ref)) == SwitchingRole::Relay;
    return isRelay ? RelayTask::Unknown : RelayTask::None;
}

QString positionText(const std::optional<SwitchingModel> &switching, const TracedStep &step)
{
    if (taskOf(switching, step) != RelayTask::Set)
        return {};
    return positionText(*switching, switching->componentOf(step.component->ref), step.position);
}

namespace {

QString relayText(const RouteReport &report, const TracedStep &step)
{
    const QString position = positionText(report.switching, step);
    return position.isEmpty() ? step.component->ref : step.component->ref + u'=' + position;
}
}

QString crossingText(const RouteReport &report, const TracedStep &step)
{
    const RelayTask task = taskOf(report.switching, step);
    const QString mark = task == RelayTask::StayAtRest ? u" (rest)"_s
                         : task == RelayTask::Unknown  ? u" (?)"_s
                                                       : QString();
    return relayText(report, step) + mark;
}

QStringList relaysWith(RelayTask task, const RouteReport &report, const TracedPath &path)
{
    QStringList texts;
    for (const TracedStep &step : path.steps) {
        if (taskOf(report.switching, step) == task)
            texts.append(relayText(report, step));
    }
    texts.removeDuplicates();
    return texts;
}

QStringList unknownRelays(const RouteReport &report)
{
    std::set<QString> refs;
    for (const TracedPath &path : report.tracedPaths) {
        for (const TracedStep &step : path.steps) {
            if (taskOf(report.switching, step) == RelayTask::Unknown)
                refs.insert(step.component->ref);
        }
    }
    return {refs.cbegin(), refs.cend()};
}

QJsonValue positionToJson(const TracedStep &step)
{
    return step.position == TracedStep::asDrawn ? QJsonValue() : step.position;
}

QJsonArray stepsToJson(const QList<TracedStep> &steps)
{
    QJsonArray crossings;
    for (const TracedStep &step : steps) {
        QJsonObject crossing = componentToJson(*step.component);
        crossing.insert(u"pins"_s, QJsonArray{step.entryPin, step.exitPin});
        crossing.insert(u"position"_s, positionToJson(step));
        crossings.append(crossing);
    }
    return crossings;
}

QJsonObject positionsToJson(const RouteReport &report, const TracedPath &path)
{
    QMap<int, int> positionsOfGangs;
    for (const TracedStep &step : path.steps) {
        if (taskOf(report.switching, step) == RelayTask::Set)
            positionsOfGangs.insert(report.switching->gangOf(report.switching->componentOf(step.component->ref)),
                                    step.position);
    }
    QMap<QString, int> positions; // sorted, since an object moves all members that come behind a new one
    for (auto gang = positionsOfGangs.cbegin(); gang != positionsOfGangs.cend(); ++gang) {
        for (const QString &ref : report.switching->gang(gang.key()).components)
            positions.insert(ref, gang.value());
    }
    QJsonObject members;
    for (auto position = positions.cbegin(); position != positions.cend(); ++position)
        members.insert(position.key(), position.value());
    return members;
}

QString waysAsDrawn(qsizetype count)
{
    return count == 1 ? u"1 way as drawn"_s : u"%1 ways as drawn"_s.arg(count);
}

QString leftOutText(const RouteReport &report)
{
    if (!report.switching || report.leftOut == 0)
        return {};
    if (!report.leftOut)
        return u"to count the ways as drawn that no state of the relays makes would take long (see --as-drawn)"_s;
    const QString among = report.areThereMore ? u" among the first %1"_s.arg(report.routeCount()) : QString();
    return u"left out: %1%2, which no state of the relays makes (see --as-drawn)"_s.arg(waysAsDrawn(*report.leftOut),
                                                                                        among);
}
}
