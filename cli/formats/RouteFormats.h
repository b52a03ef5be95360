#ifndef VELK_CLI_FORMATS_ROUTEFORMATS_H
#define VELK_CLI_FORMATS_ROUTEFORMATS_H

#include "cli/formats/Format.h"
#include "cli/formats/RouteReport.h"

class QIODevice;

namespace VelkCli {

/// text: a numbered line for each route and a line with the count, which also tells whether there are more.
///
/// json: {"routes": [{"switchingComponents": [component], "additionalConnections": [{"component", "pin"}]}]}, and
/// besides "more": true if there are more, and "reason" if there is none.
///
/// csv: a row for each route; cells that list several things separate them with blanks.
///
/// json, dot and html: see routesToJson(), drawRoutes() and routesToPage().
const Formats<RouteReport> &routeFormats();

/// {"routes": [{"switchingComponents": [component], "additionalConnections": [{"component", "pin"}]}]}, and besides
/// "more": true if there are more, and "reason" if there is none.
void routesToJson(const RouteReport &report, QIODevice &device);

/// Whether the format tells what traced paths alone know.
bool needsTracedPaths(const std::string &format);
}

#endif
