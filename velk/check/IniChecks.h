#ifndef VELK_CLI_CHECK_INICHECKS_H
#define VELK_CLI_CHECK_INICHECKS_H

#include "velk/check/CheckedSystem.h"
#include "velk/check/Finding.h"

namespace VelkCli {

/// More are a typing error, for which velk ini writes no file.
constexpr int mostBenches = 10'000;

QList<QSharedPointer<Velk::EDAComponent>> componentsOf(const Velk::EDAProvider &netlist, const QStringList &types);

/// On no bench, or without Group or Identifier.
QList<Finding> dutFindings(const Velk::EDAComponent &dut);
/// Without Dev or DevNo.
QList<Finding> sourceFindings(const Velk::EDAComponent &source);

/// What would be missing or ambiguous in the INI files of the system, with all its sources and DUTs.
QList<Finding> iniFindings(const CheckedSystem &system);
}

#endif
