#ifndef VELK_CLI_FORMATS_PLANTEXT_H
#define VELK_CLI_FORMATS_PLANTEXT_H

#include "cli/formats/PlanReport.h"
#include "cli/terminal/Colour.h"

namespace VelkCli {

/// How much a plan takes, or why there is none, in words: "3 relays, proven to be the fewest".
QString planResultText(const PlanReport &report, const PlanStep &step);

/// A step as planFormats() tells it, in lines.
QString planStepText(const PlanReport &report, const PlanStep &step, const Colour &colour);
}

#endif
