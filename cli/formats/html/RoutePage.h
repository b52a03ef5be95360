#ifndef VELK_CLI_FORMATS_HTML_ROUTEPAGE_H
#define VELK_CLI_FORMATS_HTML_ROUTEPAGE_H

#include "cli/formats/RouteReport.h"

namespace VelkCli {

/// A page in HTML that shows the routes to people: it needs nothing but a browser. The data in it, a JSON object in the
/// script element with the id "data", names components, nets, crossings and connections once and refers to them
/// by their places; no text of the netlist stands anywhere else.
QByteArray routesToPage(const RouteReport &report);
}

#endif
