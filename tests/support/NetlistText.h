#ifndef VELK_TESTS_NETLISTTEXT_H
#define VELK_TESTS_NETLISTTEXT_H

#include <velk/model/EDAProvider.h>

#include <QByteArray>
#include <QStringList>

/// KiCad netlists as text: netlist(component("K1", "P", property("CompType", "Relay")), libpart("P", pin("1")), {}).
namespace NetlistText {

/// (name "value")
inline QByteArray element(const QByteArray &name, const QByteArray &value)
{
    return '(' + name + " \"" + value + "\")";
}

inline QByteArray property(const QByteArray &name, const QByteArray &value)
{
    return "(property " + element("name", name) + element("value", value) + ")";
}

inline QByteArray component(const QByteArray &ref, const QByteArray &part, const QByteArray &properties,
                            const QByteArray &value = {})
{
    return "(comp " + element("ref", ref) + element("value", value) + "(libsource " + element("part", part) + ")" +
           properties + ")";
}

inline QByteArray pin(const QByteArray &number, const QByteArray &name = {})
{
    return "(pin " + element("num", number) + element("name", name) + element("type", {}) + ")";
}

inline QByteArray libpart(const QByteArray &name, const QByteArray &pins)
{
    return "(libpart " + element("part", name) + "(pins " + pins + "))";
}

inline QByteArray node(const QByteArray &ref, const QByteArray &pinNumber)
{
    return "(node " + element("ref", ref) + element("pin", pinNumber) + ")";
}

inline QByteArray net(const QByteArray &name, const QByteArray &nodes)
{
    return "(net " + element("name", name) + nodes + ")";
}

/// With nodes as "K1/1".
inline QByteArray net(const QByteArray &name, const QStringList &nodes)
{
    QByteArray text;
    for (const QString &written : nodes)
        text += node(written.section(QLatin1Char('/'), 0, 0).toUtf8(), written.section(QLatin1Char('/'), 1).toUtf8());
    return net(name, text);
}

inline QByteArray netlist(const QByteArray &components, const QByteArray &libparts, const QByteArray &nets)
{
    return "(export (components " + components + ") (libparts " + libparts + ") (nets " + nets + "))";
}

/// What a provider holds.
inline QByteArray netlist(const Velk::EDAProvider &provider)
{
    QByteArray components, libparts, nets;
    for (const auto &listed : provider.getComponents()) {
        QByteArray properties;
        for (auto it = listed->properties.cbegin(); it != listed->properties.cend(); ++it)
            properties += property(it.key().toUtf8(), it.value().toUtf8());
        components += component(listed->ref.toUtf8(), listed->part.toUtf8(), properties, listed->value.toUtf8());
    }
    for (const auto &part : provider.getParts()) {
        QByteArray pins;
        for (const auto &listed : std::as_const(part->pins))
            pins += pin(listed->number.toUtf8(), listed->name.toUtf8());
        libparts += libpart(part->name.toUtf8(), pins);
    }
    for (const auto &listed : provider.getNets()) {
        QByteArray nodes;
        for (const auto &listedNode : std::as_const(listed->nodes))
            nodes += node(listedNode->ref.toUtf8(), listedNode->pin.toUtf8());
        nets += net(listed->name.toUtf8(), nodes);
    }
    return netlist(components, libparts, nets);
}
}

#endif
