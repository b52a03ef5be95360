#ifndef VELK_CLI_FORMATS_HTML_RELAYSAWAY_H
#define VELK_CLI_FORMATS_HTML_RELAYSAWAY_H

#include <velk/switching/SwitchingModel.h>

#include <QJsonArray>
#include <QString>

#include <functional>
#include <vector>

namespace VelkCli {

/// What system.js shows of the relays away from rest in these positions of all gangs: {"component", "setting", "sets"}.
/// \a placeOf tells where the data have a component, \a setOf the set that a net is shown in, or SwitchingModel::none.
QJsonArray relaysAwayToData(const Velk::SwitchingModel &model, const std::vector<int> &positions,
                            const std::function<qsizetype(const QString &ref)> &placeOf,
                            const std::function<int(int net)> &setOf);
}

#endif
