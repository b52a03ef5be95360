#ifndef VELK_CLI_COMMANDS_INIWARNINGS_H
#define VELK_CLI_COMMANDS_INIWARNINGS_H

#include <QStringList>

namespace Velk {
class EDAApplicationIniGenerator;
class EDAPhysicalIniGenerator;
}

namespace VelkCli {

/// What the INI files take in silence and an engineer would want to know, a line each: no device, no DUT or no source
/// at all; a DUT on no bench, without Group or Identifier; a source without Dev or DevNo.
QStringList deviceWarnings(const Velk::EDAPhysicalIniGenerator &generator, const QStringList &types);
QStringList dutWarnings(const Velk::EDAApplicationIniGenerator &generator, const QStringList &dutTypes);
QStringList sourceWarnings(const Velk::EDAApplicationIniGenerator &generator);
}

#endif
