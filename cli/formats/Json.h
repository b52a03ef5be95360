#ifndef VELK_CLI_FORMATS_JSON_H
#define VELK_CLI_FORMATS_JSON_H

#include <velk/model/EDAComponent.h>
#include <velk/model/EDAPin.h>
#include <velk/switching/SwitchingModel.h>

#include <QJsonArray>
#include <QJsonObject>

#include <functional>

class QIODevice;

namespace VelkCli {

QJsonObject componentToJson(const Velk::EDAComponent &component);    ///< ref, value, part, properties
QJsonObject pinToJson(const Velk::EDAPin &pin);                      ///< number, name, type
QJsonArray pinsToJson(const QList<Velk::InterfacePin> &pins);        ///< "REF.NUMBER"
QJsonArray setsToJson(const QList<QList<Velk::InterfacePin>> &sets); ///< of such pins

QByteArray jsonDocument(const QJsonObject &members);

/// Writes the document of \a members and, behind them, a list, of which there is one element at a time in memory.
void writeJson(QIODevice &device, const QJsonObject &members, const QString &listName, qsizetype count,
               const std::function<QJsonObject(qsizetype)> &element);
}

#endif
