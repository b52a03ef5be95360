#include "cli/formats/Json.h"

#include <QIODevice>
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

QJsonArray pinsToJson(const QList<Velk::InterfacePin> &pins)
{
    QJsonArray result;
    for (const Velk::InterfacePin &pin : pins)
        result.append(pin.ref + u'.' + pin.number);
    return result;
}

QJsonArray setsToJson(const QList<QList<Velk::InterfacePin>> &sets)
{
    QJsonArray result;
    for (const QList<Velk::InterfacePin> &pins : sets)
        result.append(pinsToJson(pins));
    return result;
}

QByteArray jsonDocument(const QJsonObject &members)
{
    return QJsonDocument(members).toJson();
}

void writeJson(QIODevice &device, const QJsonObject &members, const QString &listName, qsizetype count,
               const std::function<QJsonObject(qsizetype)> &element)
{
    const QByteArray end = "    ]\n}\n";
    // The document with an empty list is where the elements go, each as a document moved to the right.
    const QByteArray empty = jsonDocument({{listName, QJsonArray()}});
    const QByteArray begin = jsonDocument(members).chopped(3); // "\n}\n"
    device.write(begin + (members.isEmpty() ? "\n" : ",\n") + empty.mid(2).chopped(end.size()));
    for (qsizetype i = 0; i < count; ++i) {
        const QByteArray text = jsonDocument(element(i)).chopped(1).replace('\n', "\n        ");
        if (device.write("        " + text + (i + 1 < count ? ",\n" : "\n")) < 0)
            return;
    }
    device.write(end);
}
}
