#ifndef VELK_CHECK_NETCHECKS_H
#define VELK_CHECK_NETCHECKS_H

#include <velk/check/CheckedSystem.h>
#include <velk/check/SingleFinding.h>

namespace Velk {

/// Components that routes do not see as they are drawn: those without a type, those that are not populated, and those
/// with pins on no net, on two or alone on one.
QList<SingleFinding> netFindings(const CheckedSystem &system);
}

#endif
