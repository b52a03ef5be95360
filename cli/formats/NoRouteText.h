#ifndef VELK_CLI_FORMATS_NOROUTETEXT_H
#define VELK_CLI_FORMATS_NOROUTETEXT_H

#include "cli/formats/RouteReport.h"

#include <QJsonObject>

namespace VelkCli {

/// "1 switch"
QString switchCount(qsizetype count);

/// Sentences that tell the reason of a report that has one.
QStringList reasonTexts(const RouteReport &report);

/// The same for programs: {"texts": [sentence]}, and besides what is known of "limits": [{"maxSwitches",
/// "maxConnections", "switches", "connections"}], "source" and "destination": {"nets": [name], "boards": [number],
/// "unpluggedPins": [{"ref", "pin"}]}, "between": [component], "excludedComponents":
/// [reference] and "excludedNets": [name], those that stand in the way, and "conflict": crossings that no state of the
/// relays makes together, as stepsToJson() has them.
QJsonObject reasonToJson(const RouteReport &report);
}

#endif
