#ifndef VELK_CLI_FORMATS_HTML_COVERAGEPAGE_H
#define VELK_CLI_FORMATS_HTML_COVERAGEPAGE_H

#include "cli/formats/CoverageReport.h"

#include <QByteArray>

namespace VelkCli {

/// A page in HTML that shows which source pins reach which DUT pins, with the first route of each pair: it needs
/// nothing but a browser. The data in it, a JSON object in the script element with the id "data", names components,
/// nets, crossings and connections once and refers to them by their places; no text of the netlist stands anywhere
/// else.
QByteArray coverageToPage(const CoverageReport &report);
}

#endif
