#ifndef VELK_CLI_FORMATS_ROUTERELAYS_H
#define VELK_CLI_FORMATS_ROUTERELAYS_H

#include "cli/formats/RouteReport.h"

#include <QJsonArray>
#include <QJsonObject>

namespace VelkCli {

/// What a route asks of a component that it crosses.
enum class RelayTask
{
    None, ///< of what is passive, and wherever ways as drawn were asked for
    Set,
    StayAtRest,
    Unknown, ///< the positions of the relay are not known, so that it is crossed as drawn
};

/// Without \a switching, of ways as drawn, there is none.
RelayTask taskOf(const std::optional<Velk::SwitchingModel> &switching, const Velk::TracedStep &step);

/// The position where "set" does not tell it: of a relay with more than two, or with names, "CH2" or its number "2".
QString positionText(const std::optional<Velk::SwitchingModel> &switching, const Velk::TracedStep &step);

/// "K1#1 (rest)", "K5#1 (?)", and what has to be set as velk state --set takes it: "K1#1", "K7#1=CH2".
QString crossingText(const RouteReport &report, const Velk::TracedStep &step);

/// The same, without what stands in parentheses, of what has this task on the route, each once.
QStringList relaysWith(RelayTask task, const RouteReport &report, const Velk::TracedPath &path);

/// The relays that any of the routes crosses although nobody knows their positions: sorted references.
QStringList unknownRelays(const RouteReport &report);

/// The number of the position, or null where the component has no task.
QJsonValue positionToJson(const Velk::TracedStep &step);

/// For each step the component with "pins": [entry, exit], by number, and its "position".
QJsonArray stepsToJson(const QList<Velk::TracedStep> &steps);

/// The positions away from rest that the route needs, by reference. All relays of a gang are set at once.
QJsonObject positionsToJson(const RouteReport &report, const Velk::TracedPath &path);

/// "12 ways as drawn"
QString waysAsDrawn(qsizetype count);

/// "left out: 12 ways as drawn, which ..."; empty where there are none.
QString leftOutText(const RouteReport &report);
}

#endif
