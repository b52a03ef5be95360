#ifndef VELK_CLI_FORMATS_HTML_STATEPAGE_H
#define VELK_CLI_FORMATS_HTML_STATEPAGE_H

#include "cli/formats/StateReport.h"

#include <QByteArray>

namespace VelkCli {

/// A page in HTML that shows step by step what is connected: it needs nothing but a browser. The data in it, a JSON
/// object in the script element with the id "data", names components and pins once and refers to them by their places;
/// no text of the netlist stands anywhere else.
QByteArray statesToPage(const StateReport &report);
}

#endif
