#ifndef VELK_CLI_FORMATS_PLANJSON_H
#define VELK_CLI_FORMATS_PLANJSON_H

#include "cli/formats/PlanReport.h"

#include <QJsonObject>

namespace VelkCli {

/// "optimal"
QString planResultName(Velk::PlanResult result);

/// A step as planFormats() tells it.
QJsonObject planStepToJson(const PlanReport &report, const PlanStep &step);
}

#endif
