#ifndef VELK_FACADE_STANDARDTYPES_H
#define VELK_FACADE_STANDARDTYPES_H

#include <velk/facade/VelkSystem.h>
#include <velk/kicad/KiCadReadingMode.h>
#include <velk/model/EDAComponent.h>
#include <velk/model/EDAPin.h>
#include <velk/switching/RelayPositions.h>

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

#include <map>
#include <string>
#include <vector>

namespace Velk {

// What callers without Qt give and get, in the types of both sides.

QStringList toQt(const std::vector<std::string> &texts);
QMap<QString, QString> toQt(const std::map<std::string, std::string> &properties);
KiCadReadingMode toQt(VelkReadingMode mode);

VELK_EXPORT std::vector<std::string> toStandard(const QStringList &texts);
VelkComponentInfo toStandard(const EDAComponent &component);
VelkPinInfo toStandard(const EDAPin &pin);
VelkPositionsRule toStandard(PositionsRule rule);
}

#endif
