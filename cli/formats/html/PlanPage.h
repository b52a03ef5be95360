#ifndef VELK_CLI_FORMATS_HTML_PLANPAGE_H
#define VELK_CLI_FORMATS_HTML_PLANPAGE_H

#include "cli/formats/PlanReport.h"

#include <QByteArray>

namespace VelkCli {

/// A page in HTML that shows what to set for each step and the ways that its connections take, or which of them are in
/// conflict: it needs nothing but a browser. The data in it, a JSON object in the script element with the id "data",
/// names components, nets, pins and crossings once and refers to them by their places; no text of the netlist stands
/// anywhere else.
QByteArray plansToPage(const PlanReport &report);
}

#endif
