#ifndef VELK_TESTS_STUBPROVIDER_H
#define VELK_TESTS_STUBPROVIDER_H

#include <velk/model/EDAProvider.h>

#include <QStringList>

/// A netlist filled by hand: provider.add("K1", "Relay", {"1", "2"}); provider.connect("N1", {"K1/1",
/// "U1/2"}).
class StubProvider : public Velk::EDAProvider
{
public:
    QList<QSharedPointer<Velk::EDANet>> nets;
    QList<QSharedPointer<Velk::EDAComponent>> components;
    QList<QSharedPointer<Velk::EDAPart>> parts;
    bool makesNewNets = false; ///< whether getNets() hands out new objects at every call

    /// A component of this type with a part of its own, named like it with a leading "P". A pin is "number"
    /// or "number=name".
    QSharedPointer<Velk::EDAComponent> add(const QString &ref, const QString &type, const QStringList &pins,
                                           const QString &identifier = QString())
    {
        const auto part = Velk::EDAPart::create(u'P' + ref, QString());
        for (const QString &pin : pins) {
            const QString number = pin.section(u'=', 0, 0);
            part->pins.append(Velk::EDAPin::create(number, pin.section(u'=', 1), QString()));
        }
        parts.append(part);
        components.append(Velk::EDAComponent::create(ref, QString(), part->name));
        components.last()->properties = {{Velk::EDAComponent::TYPE, type}};
        if (!identifier.isNull())
            components.last()->properties.insert(Velk::EDAComponent::IDENTIFER, identifier);
        return components.last();
    }

    void connect(const QString &net, const QStringList &nodes)
    {
        nets.append(Velk::EDANet::create(net));
        for (const QString &node : nodes)
            nets.last()->addNode(node.section(u'/', 0, 0), node.section(u'/', 1));
    }

    QList<QSharedPointer<Velk::EDANet>> getNets() const override
    {
        if (!makesNewNets)
            return nets;
        QList<QSharedPointer<Velk::EDANet>> clones;
        for (const auto &net : nets)
            clones.append(net->clone());
        return clones;
    }

    QList<QSharedPointer<Velk::EDAComponent>> getComponents() const override { return components; }

    QSharedPointer<Velk::EDAComponent> getComponentByRef(const QString &ref) const override
    {
        return firstOf(components, [&](const auto &component) { return component->ref == ref; });
    }

    QSharedPointer<Velk::EDAComponent> getComponentByProperties(const QMap<QString, QString> &properties) const override
    {
        return firstOf(components, [&](const auto &component) { return component->matchesProperties(properties); });
    }

    QList<QSharedPointer<Velk::EDAPart>> getParts() const override { return parts; }

    QSharedPointer<Velk::EDAPart> getPartByName(const QString &name) const override
    {
        return firstOf(parts, [&](const auto &part) { return part->name == name; });
    }

private:
    template <typename Element, typename Condition>
    static QSharedPointer<Element> firstOf(const QList<QSharedPointer<Element>> &list, Condition condition)
    {
        for (const auto &element : list) {
            if (element && condition(element))
                return element;
        }
        return {};
    }
};

/// "SIG: J1/3 K1/1" for each net, one a line.
inline QString netsToText(const QList<QSharedPointer<Velk::EDANet>> &nets)
{
    QString text;
    for (const auto &net : nets) {
        text += net->name + u':';
        for (const auto &node : std::as_const(net->nodes))
            text += u' ' + node->ref + u'/' + node->pin;
        text += u'\n';
    }
    return text;
}

#endif
