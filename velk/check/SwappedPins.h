#ifndef VELK_CHECK_SWAPPEDPINS_H
#define VELK_CHECK_SWAPPEDPINS_H

#include <velk/check/CheckedSystem.h>
#include <velk/check/SingleFinding.h>

namespace Velk {

/// Pins of connectors that are plugged together, of which the nets are called alike on both sides at more than half of
/// the pins, but exchanged at these.
QList<SingleFinding> swappedPinFindings(const CheckedSystem &system);
}

#endif
