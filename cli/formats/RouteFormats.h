#ifndef VELK_CLI_FORMATS_ROUTEFORMATS_H
#define VELK_CLI_FORMATS_ROUTEFORMATS_H

#include "cli/formats/Format.h"
#include "cli/formats/RouteReport.h"

class QIODevice;

namespace VelkCli {

/// text: a numbered line for each route and a line with the count, which also tells what is not shown.
///
/// csv: a row for each route; cells that list several things separate them with blanks.
///
/// json, dot and html: see routesToJson(), drawRoutes() and routesToPage().
const Formats<RouteReport> &routeFormats();

/// {"source": end, "destination": end, "routes": [{"switchingComponents": [component, with "pins": [entry, exit] and
/// "position": number or null], "additionalConnections": [end]}]} with end as {"component", "pin"}, and besides "more":
/// true if there are more, "reason" if there is none, and "excludedComponents": [reference] and "excludedNets": [name]
/// if there are any. Where positions were looked at, each route has "positions": {reference: number}, all that has to
/// be away from rest, and the whole "unknown": [reference], relays that routes cross as drawn, and "leftOut",
/// RouteReport::leftOut if that is known.
void routesToJson(const RouteReport &report, QIODevice &device);

/// Whether the format tells what traced paths alone know, also of ways as drawn.
bool needsTracedPaths(const std::string &format);

/// Whether the format tells how many ways as drawn were left out.
bool tellsLeftOut(const std::string &format);
}

#endif
