#ifndef VELK_CLI_FORMATS_COVERAGEFORMATS_H
#define VELK_CLI_FORMATS_COVERAGEFORMATS_H

#include "cli/formats/CoverageReport.h"
#include "cli/formats/Format.h"

namespace VelkCli {

/// text: how many pairs are reached over how many switches, what is not reached or not used, and what is critical and
/// different.
///
/// csv: a line for each source pin with the number of switches to each DUT pin, which the head line names; an empty
/// cell where there is no route. What is different goes to standard error.
///
/// json: {"sources": [pin], "duts": [pin], "switches": [[number or null]]}, a row for each source pin, and where
/// there are any "excludedComponents": [reference] and "excludedNets": [name], and where asked for "critical":
/// [{"component", "lost": [[source, dut]]}], by their numbers from 0, and "compared": {"lost", "gained":
/// [[source, dut]], "longer", "shorter": [[source, dut, before, now]]}, by their names. A pin is "REF.NUMBER".
const Formats<CoverageReport> &coverageFormats();

/// Whether the form tells CoverageReport::firstRoutes.
bool tellsFirstRoutes(const std::string &format);
/// Whether it tells which components are on no route.
bool tellsUnused(const std::string &format);
}

#endif
