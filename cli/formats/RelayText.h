#ifndef VELK_CLI_FORMATS_RELAYTEXT_H
#define VELK_CLI_FORMATS_RELAYTEXT_H

#include <velk/switching/SwitchingModel.h>

namespace VelkCli {

/// A position away from rest in one word, as velk state --set takes it: "CH2", or "2" where it has no name, one that
/// could be a number or that of an earlier position. Empty where the relay has no other such position and this one has
/// no name.
QString positionText(const Velk::SwitchingModel &model, int component, int position);

/// A relay in a position away from rest, as velk state --set takes it: "K1#1", or with a positionText() "K7#1=CH2".
QString settingText(const Velk::SwitchingModel &model, int component, int position);

/// The relays away from rest in these positions of all gangs, by reference.
QStringList settingTexts(const Velk::SwitchingModel &model, const std::vector<int> &positions);
}

#endif
