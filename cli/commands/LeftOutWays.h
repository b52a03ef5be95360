#ifndef VELK_CLI_COMMANDS_LEFTOUTWAYS_H
#define VELK_CLI_COMMANDS_LEFTOUTWAYS_H

#include "cli/commands/RouteEnd.h"
#include "cli/formats/RouteReport.h"

#include <functional>
#include <optional>

namespace VelkCli {

/// For a search besides the one that was asked for: true some seconds from now on.
std::function<bool()> afterSomeSeconds();

/// RouteReport::leftOut for a report that has its routes, all of which some state of the relays makes.
std::optional<qsizetype> leftOutWays(const RouteEnd &source, const RouteEnd &destination, const RouteReport &report);
}

#endif
