#ifndef VELK_CLI_INIWARNINGS_H
#define VELK_CLI_INIWARNINGS_H

#include <velk/model/EDAProvider.h>

#include <QByteArray>
#include <QStringList>

namespace VelkCli {

/// Throws a CommandError for a DUT whose bench number would make a file of more than 10,000 benches: a typing
/// error.
void checkBenchNumbers(const Velk::EDAProvider &application, const QStringList &dutTypes);

/// What the application INI takes in silence and an engineer would want to know, a line each: a DUT on no
/// bench or with an unknown part; a source without Dev or DevNo or with an unknown part.
QStringList dutWarnings(const Velk::EDAProvider &application, const QStringList &dutTypes);
QStringList sourceWarnings(const Velk::EDAProvider &testSystem);

/// For each key that a section of this INI text holds more than once. Readers keep one of the values only.
QStringList duplicateKeyWarnings(const QByteArray &ini);
}

#endif
