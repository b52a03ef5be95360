#ifndef VELK_CLI_COMMANDS_INIWARNINGS_H
#define VELK_CLI_COMMANDS_INIWARNINGS_H

#include <velk/model/EDAProvider.h>

#include <QStringList>

namespace VelkCli {

/// Throws a CommandError for a DUT whose bench number would make a file of more than 10,000 benches: a typing
/// error.
void checkBenchNumbers(const Velk::EDAProvider &application, const QStringList &dutTypes);
/// Throws a CommandError for a DUT whose bench number, times what each channel table holds of the sources, would make a
/// file of more than 5,000,000 entries.
void checkNumberOfEntries(const Velk::EDAProvider &testSystem, const Velk::EDAProvider &application,
                          const QStringList &dutTypes);

/// What the INI files take in silence and an engineer would want to know, a line each: no device at all; a DUT on no
/// bench, without Group or Identifier or with an unknown part; a source without Dev or DevNo or with an unknown part.
QStringList deviceWarnings(const Velk::EDAProvider &netlist, const QStringList &types);
QStringList dutWarnings(const Velk::EDAProvider &application, const QStringList &dutTypes);
QStringList sourceWarnings(const Velk::EDAProvider &testSystem);
}

#endif
