#ifndef VELK_CHECK_RELAYCHECKS_H
#define VELK_CHECK_RELAYCHECKS_H

#include <velk/check/CheckedSystem.h>
#include <velk/check/SingleFinding.h>
#include <velk/switching/SwitchingModel.h>

namespace Velk {

/// Relays of which nobody knows what they connect, or that do not do together what is drawn as one. The model is that
/// of the system.
QList<SingleFinding> relayFindings(const CheckedSystem &system, const SwitchingModel &model);
}

#endif
