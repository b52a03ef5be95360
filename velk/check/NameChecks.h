#ifndef VELK_CHECK_NAMECHECKS_H
#define VELK_CHECK_NAMECHECKS_H

#include <velk/check/CheckedSystem.h>
#include <velk/check/SingleFinding.h>

namespace Velk {

/// Names and values of properties that look like typing errors for others.
QList<SingleFinding> nameFindings(const CheckedSystem &system);
}

#endif
