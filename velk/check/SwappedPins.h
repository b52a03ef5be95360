#ifndef VELK_CLI_CHECK_SWAPPEDPINS_H
#define VELK_CLI_CHECK_SWAPPEDPINS_H

#include "velk/check/CheckedSystem.h"
#include "velk/check/Finding.h"

namespace VelkCli {

/// Pins of connectors that are plugged together, of which the nets are called alike on both sides at more than half of
/// the pins, but exchanged at these.
QList<Finding> swappedPinFindings(const CheckedSystem &system);
}

#endif
