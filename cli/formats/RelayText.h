#ifndef VELK_CLI_FORMATS_RELAYTEXT_H
#define VELK_CLI_FORMATS_RELAYTEXT_H

#include <velk/switching/SwitchingModel.h>

namespace VelkCli {

/// A relay in a position away from rest, as velk state --set takes it: "K1#1", or "K7#1=CH2" where there are several
/// such positions or names.
QString settingText(const Velk::SwitchingModel &model, int component, int position);

/// The relays away from rest in these positions of all gangs, by reference.
QStringList settingTexts(const Velk::SwitchingModel &model, const std::vector<int> &positions);
}

#endif
