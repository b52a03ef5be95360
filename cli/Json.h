#ifndef VELK_CLI_JSON_H
#define VELK_CLI_JSON_H

#include <velk/model/EDAComponent.h>
#include <velk/model/EDAPin.h>

#include <QJsonArray>
#include <QJsonObject>

namespace VelkCli {

QJsonObject componentToJson(const Velk::EDAComponent &component); ///< ref, value, part, properties
QJsonObject pinToJson(const Velk::EDAPin &pin);                   ///< number, name, type

QByteArray jsonDocument(const QJsonObject &members);
}

#endif
