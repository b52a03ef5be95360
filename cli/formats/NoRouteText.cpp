#include "cli/formats/NoRouteText.h"

#include "cli/formats/Json.h"
#include "cli/formats/RouteRelays.h"

#include <velk/naming/References.h>
#include <velk/naming/Suggestions.h>

#include <algorithm>
#include <set>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

/// "8 switches, 1 side connection"
QString amountText(const SufficientLimits &found)
{
    QString text = switchCount(found.switchingComponents);
    if (found.additionalNodes > 0)
        text += found.additionalNodes == 1 ? u", 1 side connection"_s
                                           : u", %1 side connections"_s.arg(found.additionalNodes);
    return text;
}

QString optionText(const SufficientLimits &found, const RouteReport &report)
{
    QStringList options;
    if (found.maxSwitchingComponents != report.routing.maxSwitchingComponentsPerPath())
        options.append(u"--max-switches %1"_s.arg(found.maxSwitchingComponents));
    if (found.maxAdditionalNodes != report.routing.maxAdditionalNodesPerPath())
        options.append(u"--max-connections %1"_s.arg(found.maxAdditionalNodes));
    return u"with %1 (%2)"_s.arg(options.join(u' '), amountText(found));
}

/// "with --max-switches 7 (8 switches), or one with --max-connections 4 (6 switches, 4 side connections)"
QString limitsText(const RouteReport &report)
{
    QStringList ways;
    for (const SufficientLimits &limits : report.reason->sufficientLimits)
        ways.append(optionText(limits, report));
    return ways.join(u", or one "_s);
}

/// Empty if ways may lead on from the pin.
QString looseEndText(const PathReach &reach, const QString &pin)
{
    if (reach.isExcluded)
        return u"the net of %1 is kept out by --without-net"_s.arg(pin);
    if (!reach.isAlone)
        return {};
    return reach.nets.isEmpty() ? pin + u" lies on no net"_s : u"nothing else lies on the net of "_s + pin;
}

/// The numbers of the boards with a pin on these nets, ascending.
QList<int> boardsOf(const PathReach &reach)
{
    std::set<int> boards;
    for (const auto &net : reach.nets) {
        for (const auto &node : std::as_const(net->nodes))
            boards.insert(netlistOf(node->ref));
    }
    return {boards.cbegin(), boards.cend()};
}

QStringList namesOf(const QList<QSharedPointer<EDANet>> &nets)
{
    QStringList names;
    for (const auto &net : nets)
        names.append(net->name);
    return names;
}

/// "from U2#1.HI one gets to 2 nets on board #1: N1#1, N2#1; connector pins there without counterpart: X1#1.5"
QString reachText(const PathReach &reach, const QString &pin, const PinNames &pinNames)
{
    QStringList boards;
    for (const int board : boardsOf(reach))
        boards.append(u'#' + QString::number(board));
    QStringList pins;
    for (const auto &node : reach.unpluggedPins)
        pins.append(pinNames.text(node->ref, node->pin));
    const QString text = u"from %1 one gets to %2 on %3 %4: %5"_s.arg(
        pin, reach.nets.size() == 1 ? u"1 net"_s : u"%1 nets"_s.arg(reach.nets.size()),
        boards.size() == 1 ? u"board"_s : u"boards"_s, enumeration(boards), enumeration(namesOf(reach.nets)));
    return pins.isEmpty() ? text : text + u"; connector pins there without counterpart: "_s + enumeration(pins);
}

QString betweenText(const QList<QSharedPointer<EDAComponent>> &components)
{
    QStringList texts;
    for (const auto &component : components)
        texts.append(u"%1 (%2)"_s.arg(
            component->ref, component->type().isEmpty() ? u"no CompType"_s : u"CompType "_s + component->type()));
    return u"in between, but not switchable: "_s + enumeration(texts);
}

QStringList unconnectedTexts(const RouteReport &report)
{
    const NoPathReason &reason = *report.reason;
    const QString source = report.pinNames.text(report.source->ref, report.source->pin);
    const QString destination = report.pinNames.text(report.destination->ref, report.destination->pin);
    const QString direction =
        reason.isConnectedInOtherDirection ? u"; in the other direction there is one"_s : QString();
    QStringList looseEnds{looseEndText(reason.fromSource, source), looseEndText(reason.fromDestination, destination)};
    looseEnds.removeAll(QString());
    if (!looseEnds.isEmpty())
        return {looseEnds.join(u", and "_s) + direction};

    QStringList texts{u"no chain of components of CompType %1 connects them, however long"_s.arg(
                          report.routing.componentTypesThatAreSwitchable().join(u" or "_s)) +
                      direction};
    if (reason.isConnectedInOtherDirection)
        return texts;
    texts.append(reachText(reason.fromSource, source, report.pinNames));
    texts.append(reachText(reason.fromDestination, destination, report.pinNames));
    if (!reason.between.isEmpty())
        texts.append(betweenText(reason.between));
    texts.append(u"velk check on these netlists tells what in them is probably not as it is meant"_s);
    return texts;
}

QString incompleteText(const NoPathReason &reason)
{
    if (reason.shortest < 0)
        return u"it would take long to find out whether they are connected at all"_s;
    return u"all routes are beyond the limits; the shortest chain has %1, and it would take long to find out which "
           "limits would do"_s.arg(switchCount(reason.shortest));
}

/// "U1#1.HI -> K3#1 -> K7#2 -> J1#3.IN"
QString wayText(const RouteReport &report, const TracedPath &path)
{
    QStringList words{report.pinNames.text(report.source->ref, report.source->pin)};
    for (const TracedStep &step : path.steps)
        words.append(step.component->ref);
    words.append(report.pinNames.text(report.destination->ref, report.destination->pin));
    return words.join(u" -> "_s);
}

/// Of such a path what the exclusions keep out.
QStringList exclusionTexts(const RouteReport &report)
{
    const NoPathReason &reason = *report.reason;
    QStringList texts;
    const auto add = [&](const QStringList &names, const QString &option) {
        if (!names.isEmpty())
            texts.append(u"%1, which %2 keeps out, %3 on the way %4"_s.arg(
                enumeration(names), option, names.size() == 1 ? u"is"_s : u"are"_s,
                wayText(report, *reason.pathWithoutExclusions)));
    };
    add(refsOf(reason.excludedComponents), u"--without"_s);
    add(namesOf(reason.excludedNets), u"--without-net"_s);
    return texts;
}

/// "over K3#1, K4#1 "; empty if nothing is required.
QString requiredText(const RouteReport &report)
{
    const QStringList refs = report.routing.requiredComponents();
    return refs.isEmpty() ? QString() : u"over %1 "_s.arg(enumeration(refs));
}

QString waysText(const RouteReport &report)
{
    if (report.leftOut == 0)
        return u"all ways as drawn are beyond the limits (see --as-drawn)"_s;
    return u"there %1 %2, but no state of the relays makes any (see --as-drawn)"_s.arg(
        report.leftOut == 1 ? u"is"_s : u"are"_s, report.leftOut ? waysAsDrawn(*report.leftOut) : u"ways as drawn"_s);
}

/// "K1#1 set for its pins 11 and 14"
QString demandText(const RouteReport &report, const TracedStep &step)
{
    const QString position = positionText(report.switching, step);
    const QString demand = step.position == 0   ? u"at rest"_s
                           : position.isEmpty() ? u"set"_s
                                                : u"in position "_s + position;
    return u"%1 %2 for its pins %3 and %4"_s.arg(step.component->ref, demand, step.entryPin, step.exitPin);
}

QString conflictText(const RouteReport &report)
{
    const QList<TracedStep> &steps = report.reason->conflict->steps;
    if (steps.size() == 1) {
        const TracedStep &step = steps.first();
        return step.component->properties.contains(u"dnp"_s)
                   ? u"%1 is marked as not to be populated"_s.arg(step.component->ref)
                   : u"no position of %1 connects its pins %2 and %3"_s.arg(step.component->ref, step.entryPin,
                                                                            step.exitPin);
    }
    QStringList demands;
    for (const TracedStep &step : steps)
        demands.append(demandText(report, step));
    return u"it needs %1, which are one relay"_s.arg(demands.join(u" and "_s));
}

QStringList unrealizableTexts(const RouteReport &report)
{
    const NoPathReason &reason = *report.reason;
    QStringList refs;
    for (const TracedStep &step : reason.conflict->path.steps)
        refs.append(step.component->ref);
    QStringList texts{waysText(report),
                      u"the first one leads over %1, but %2"_s.arg(enumeration(refs), conflictText(report))};
    if (!reason.sufficientLimits.isEmpty())
        texts.append(u"there is a route "_s + limitsText(report));
    else if (reason.isRealizable == false)
        texts.append(u"the relays can make no other way, however long"_s);
    else
        texts.append(u"it would take long to find out whether there is a route beyond the limits"_s);
    return texts;
}

QJsonObject reachToJson(const PathReach &reach)
{
    QJsonArray boards;
    for (const int board : boardsOf(reach))
        boards.append(board);
    QJsonArray pins;
    for (const auto &node : reach.unpluggedPins)
        pins.append(QJsonObject{{u"ref"_s, node->ref}, {u"pin"_s, node->pin}});
    return {{u"nets"_s, QJsonArray::fromStringList(namesOf(reach.nets))},
            {u"boards"_s, boards},
            {u"unpluggedPins"_s, pins}};
}

QJsonArray limitsToJson(const QList<SufficientLimits> &found)
{
    QJsonArray result;
    for (const SufficientLimits &limits : found)
        result.append(QJsonObject{{u"maxSwitches"_s, limits.maxSwitchingComponents},
                                  {u"maxConnections"_s, limits.maxAdditionalNodes},
                                  {u"switches"_s, limits.switchingComponents},
                                  {u"connections"_s, limits.additionalNodes}});
    return result;
}
}

QString switchCount(qsizetype count)
{
    return count == 1 ? u"1 switch"_s : u"%1 switches"_s.arg(count);
}

QStringList reasonTexts(const RouteReport &report)
{
    if (!report.failure.isEmpty())
        return {u"why there is none could not be found out: "_s + report.failure};
    const NoPathReason &reason = *report.reason;
    const QStringList excluding = reason.pathWithoutExclusions ? exclusionTexts(report) : QStringList();
    if (reason.conflict)
        return excluding + unrealizableTexts(report);
    if (reason.isConnectedOverOthers)
        return excluding + QStringList{u"they are connected, but by no chain %1, however long"_s.arg(
                               requiredText(report).trimmed())};
    if (!reason.isComplete)
        return excluding + QStringList{incompleteText(reason)};
    if (reason.shortest >= 0)
        return excluding + QStringList{u"all routes %1are beyond the limits; there is one %2"_s.arg(
                               requiredText(report), limitsText(report))};
    return excluding.isEmpty() ? unconnectedTexts(report)
                               : excluding + QStringList{u"nothing else connects them, however long"_s};
}

QJsonObject reasonToJson(const RouteReport &report)
{
    const NoPathReason &reason = *report.reason;
    QJsonObject members{{u"texts"_s, QJsonArray::fromStringList(reasonTexts(report))}};
    if (!reason.sufficientLimits.isEmpty())
        members.insert(u"limits"_s, limitsToJson(reason.sufficientLimits));
    if (reason.pathWithoutExclusions) {
        members.insert(u"excludedComponents"_s, QJsonArray::fromStringList(refsOf(reason.excludedComponents)));
        members.insert(u"excludedNets"_s, QJsonArray::fromStringList(namesOf(reason.excludedNets)));
    }
    if (reason.conflict)
        members.insert(u"conflict"_s, stepsToJson(reason.conflict->steps));
    if (!reason.isComplete || reason.shortest >= 0 || reason.isConnectedOverOthers)
        return members;
    members.insert(u"source"_s, reachToJson(reason.fromSource));
    members.insert(u"destination"_s, reachToJson(reason.fromDestination));
    QJsonArray between;
    for (const auto &component : reason.between)
        between.append(componentToJson(*component));
    members.insert(u"between"_s, between);
    return members;
}
}
