#ifndef VELK_BENCHMARKS_ROLES_H
#define VELK_BENCHMARKS_ROLES_H

#include <velk/model/EDAComponent.h>

namespace VelkBenchmarks {

// Of the roles in a search the default types.

inline bool isSwitchable(const Velk::EDAComponent &component)
{
    return QStringList{QStringLiteral("Relay"), QStringLiteral("Resistor")}.contains(component.type(),
                                                                                     Qt::CaseInsensitive);
}

inline bool isInterface(const Velk::EDAComponent &component)
{
    return QStringList{QStringLiteral("Source"), QStringLiteral("DUT")}.contains(component.type(), Qt::CaseInsensitive);
}
}

#endif
