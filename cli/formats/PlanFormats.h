#ifndef VELK_CLI_FORMATS_PLANFORMATS_H
#define VELK_CLI_FORMATS_PLANFORMATS_H

#include "cli/formats/Format.h"
#include "cli/formats/PlanReport.h"

namespace VelkCli {

/// text: for each step what is known of it, the relays that are set, each group of connections with the way that each
/// of them takes, what else is to be known of it, and what moves; or the connections that no plan makes together.
///
/// csv: a row for each relay that moves in a step: step, order (1 to rest, 2 away from it), component, position,
/// position name, and its properties.
///
/// json: {"steps": [{"step", "result", "positions": {ref: number}, "groups": [{"connections": [row], "pins": [pin],
/// "through": [ref], "nets": [name], "sideConnections": [pin]}], "couplings": [{"groups": [number], "pins": [pin],
/// "passives": [ref]}], "alsoConnected": [[pin]], "unknown": [ref], "toRest": [ref], "toSet": [ref], "transients":
/// [{"half": "rest" or "set", "pins": [pin], "gangs": [[ref]]}]}]}; of an impossible step {"step", "result",
/// "conflict": [row], "bottleneck": [name]}, of an unknown one {"step", "result"}. A pin is "REF.NUMBER", a row that of
/// a connection in its step, from 0.
///
/// html: see plansToPage().
const Formats<PlanReport> &planFormats();

/// Whether this form tells of steps without a plan.
bool tellsStepsWithoutPlan(const std::string &format);
}

#endif
