#ifndef VELK_CHECK_PINFINDINGS_H
#define VELK_CHECK_PINFINDINGS_H

#include <velk/check/CheckedSystem.h>
#include <velk/check/SingleFinding.h>

#include <functional>

namespace Velk {

/// What is found at pins of switchable components: at those that \a pinsOf tells for the number of a component, none
/// being no finding. The text ends with their numbers. All components of a part with the same such pins are one group:
/// all relays may lack their coils.
QList<SingleFinding> pinFindings(const CheckedSystem &system, FindingCode code, const QString &text,
                                 const std::function<QStringList(int component)> &pinsOf);

/// Whether the net is that of a pin at which nothing is drawn but perhaps a cross, by the name that KiCad gives it.
bool isOfUnwiredPin(const EDANet &net);
}

#endif
