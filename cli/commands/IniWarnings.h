#ifndef VELK_CLI_COMMANDS_INIWARNINGS_H
#define VELK_CLI_COMMANDS_INIWARNINGS_H

#include <QStringList>

namespace Velk {
class EDAApplicationIniGenerator;
class EDAPhysicalIniGenerator;
}

namespace VelkCli {

/// Throws a CommandError for a DUT whose bench number is a typing error: one that would make a file of more than 10,000
/// benches or, times what each channel table holds of the sources, of more than 5,000,000 entries.
void checkBenchNumbers(const Velk::EDAApplicationIniGenerator &generator);

/// What the INI files take in silence and an engineer would want to know, a line each: no device, no DUT or no source
/// at all; a DUT on no bench, without Group or Identifier; a source without Dev or DevNo.
QStringList deviceWarnings(const Velk::EDAPhysicalIniGenerator &generator, const QStringList &types);
QStringList dutWarnings(const Velk::EDAApplicationIniGenerator &generator, const QStringList &dutTypes);
QStringList sourceWarnings(const Velk::EDAApplicationIniGenerator &generator);
}

#endif
