#include "cli/Json.h"

#include <QJsonDocument>

using namespace Qt::StringLiterals;

namespace VelkCli {

QJsonObject componentToJson(const Velk::EDAComponent &component)
{
    QJsonObject properties;
    for (auto it = component.properties.cbegin(); it != component.properties.cend(); ++it)
        properties.insert(it.key(), it.value());
    return {{u"ref"_s, component.ref},
            {u"value"_s, component.value},
            {u"part"_s, component.part},
            {u"properties"_s, properties}};
}

QJsonObject pinToJson(const Velk::EDAPin &pin)
{
    return {{u"number"_s, pin.number}, {u"name"_s, pin.name}, {u"type"_s, pin.type}};
}

QByteArray jsonDocument(const QJsonObject &members)
{
    return QJsonDocument(members).toJson();
}
}
