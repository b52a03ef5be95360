#ifndef VELK_CLI_CHECK_SWAPPEDPINS_H
#define VELK_CLI_CHECK_SWAPPEDPINS_H

#include "cli/check/CheckedSystem.h"
#include "cli/check/Finding.h"

namespace VelkCli {

/// Pins of connectors that are plugged together, of which the nets are called alike on both sides at more than half of
/// the pins, but exchanged at these.
QList<Finding> swappedPinFindings(const CheckedSystem &system);
}

#endif
