#ifndef VELK_CHECK_CONNECTORCHECKS_H
#define VELK_CHECK_CONNECTORCHECKS_H

#include <velk/check/CheckedSystem.h>
#include <velk/check/SingleFinding.h>

namespace Velk {

/// What is wrong where the netlists are plugged together.
QList<SingleFinding> connectorFindings(const CheckedSystem &system);
}

#endif
