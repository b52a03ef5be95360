#ifndef VELK_SWITCHING_STATECONNECTIONS_H
#define VELK_SWITCHING_STATECONNECTIONS_H

#include <velk/VelkExport.h>
#include <velk/switching/Connectivity.h>
#include <velk/switching/SwitchingModel.h>

#include <QList>
#include <QStringList>

namespace Velk {

/// Sets of connected pins that passive components couple with one another.
struct PinCoupling
{
    QList<QList<InterfacePin>> sets; ///< two or more; a pin that is connected with no other one is a set by itself
    QStringList passives;            ///< all that have a net in what is coupled, sorted
};

/// What a state of the relays connects. Pins are sorted by reference, then by number; sets by their pins.
struct StateConnections
{
    QList<QList<InterfacePin>> connected; ///< sets with pins on two nets at least
    QList<PinCoupling> couplings;         ///< at most one for each set of coupled nets
};

/// While the relays are as \a state has them.
VELK_EXPORT StateConnections connectionsIn(const Connectivity &state);
}

#endif
