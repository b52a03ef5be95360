#ifndef VELK_CLI_FORMATS_ROUTEDOT_H
#define VELK_CLI_FORMATS_ROUTEDOT_H

#include "cli/formats/RouteReport.h"

namespace VelkCli {

/// A Graphviz drawing of all traced routes together: the two ends, the nets and switches in between, and dashed what
/// is connected besides.
QByteArray drawRoutes(const RouteReport &report);
}

#endif
