#ifndef VELK_CLI_FORMATS_STATEFORMATS_H
#define VELK_CLI_FORMATS_STATEFORMATS_H

#include "cli/formats/Format.h"
#include "cli/formats/StateReport.h"

namespace VelkCli {

/// text: for each step the relays that are set, and a line for each set of connected pins, each coupling, and each
/// connection that is missing or short.
///
/// json: {"steps": [{"step", "connected": [[pin]], "couplings": [{"sets": [[pin]], "passives": [ref]}], "unknown":
/// [ref]}]}, and where connections are expected "missing": [{"connection", "pins"}], "through": [{"connection",
/// "passives"}] and "shorts": [{"sets", "relays"}]. A pin is "REF.NUMBER", a connection its row in the step, from 0.
///
/// html: see statesToPage().
const Formats<StateReport> &stateFormats();
}

#endif
