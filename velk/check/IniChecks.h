#ifndef VELK_CHECK_INICHECKS_H
#define VELK_CHECK_INICHECKS_H

#include <velk/check/CheckedSystem.h>
#include <velk/check/SingleFinding.h>

namespace Velk {

/// On no bench, or without Group or Identifier.
QList<SingleFinding> dutFindings(const EDAComponent &dut);
/// Without Dev or DevNo.
QList<SingleFinding> sourceFindings(const EDAComponent &source);

/// What would be missing or ambiguous in the INI files of the system, with all its sources and DUTs.
QList<SingleFinding> iniFindings(const CheckedSystem &system);
}

#endif
