#ifndef VELK_CLI_FORMATS_MODELNAMES_H
#define VELK_CLI_FORMATS_MODELNAMES_H

#include <velk/switching/SwitchingModel.h>

#include <QStringList>

#include <vector>

namespace VelkCli {

// The names of what a SwitchingModel has numbers for, sorted.

QStringList refsOfComponents(const Velk::SwitchingModel &model, const std::vector<int> &components);
QStringList refsOfPassives(const Velk::SwitchingModel &model, const std::vector<int> &passives);
/// Of all their relays.
QStringList refsOfGangs(const Velk::SwitchingModel &model, const std::vector<int> &gangs);
/// All that the nets have.
QStringList namesOfNets(const Velk::SwitchingModel &model, const std::vector<int> &nets);
}

#endif
