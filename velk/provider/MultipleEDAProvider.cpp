#include <velk/provider/MultipleEDAProvider.h>

#include <velk/model/RoutingLog.h>

#include <QHash>
#include <QStringList>

#include <utility>

using namespace Qt::StringLiterals;

namespace Velk {

const QString MultipleEDAProvider::DEFAULT_CONNECTOR_COMPONENT_TYPE = u"Connector"_s;

namespace {

using Components = QMap<QString, QSharedPointer<EDAComponent>>;

QString appendIndex(const QString &text, qsizetype index)
{
    return u"%1#%2"_s.arg(text, QString::number(index));
}

QSharedPointer<EDANet> copyNetWithRefExtendedByIndex(const QSharedPointer<EDANet> &net, qsizetype index)
{
    const auto copy = EDANet::create(appendIndex(net->name, index));
    copy->nodes.reserve(net->nodes.size());
    for (const auto &node : std::as_const(net->nodes))
        copy->addNode(appendIndex(node->ref, index), node->pin);
    return copy;
}

QStringList combinedNetNames(const QList<QSharedPointer<EDANet>> &nets)
{
    QStringList names;
    names.reserve(nets.size());
    for (const auto &net : nets)
        names.append(net->name);
    return names;
}

QSharedPointer<EDANet> combinedNet(const QList<QSharedPointer<EDANet>> &nets)
{
    const auto combined = EDANet::create(combinedNetNames(nets).join(u'+'));
    for (const auto &net : nets) {
        for (const auto &node : std::as_const(net->nodes))
            combined->addNode(node->ref, node->pin);
    }
    return combined;
}

QSharedPointer<EDAComponent> componentOfNode(const Components &components,
                                             const QSharedPointer<EDANetNode> &node)
{
    const auto component = components.value(node->ref);
    if (component.isNull())
        qCDebug(routingLog).noquote() << u"No component found for component.ref '%1'"_s.arg(node->ref);
    return component;
}

/// The nets still to be looked at, in order, with an index of the pins that they could be joined at. Every
/// component's pins are in it: only the net that looks for others has to hold a connector.
class PendingNets
{
public:
    explicit PendingNets(const Components &allComponents)
        : components(allComponents)
    {
    }

    void append(const QSharedPointer<EDANet> &net)
    {
        for (const auto &node : std::as_const(net->nodes)) {
            if (const auto component = componentOfNode(components, node))
                positionsByPin[{component->identifier(), node->pin}].append(nets.size());
        }
        nets.append(net);
    }

    /// Null when none is left.
    QSharedPointer<EDANet> takeFirst()
    {
        while (first < nets.size()) {
            if (const auto net = std::exchange(nets[first++], {}))
                return net;
        }
        return {};
    }

    /// Takes out and returns, in order, the nets that hold this pin of a component of this identifier.
    QList<QSharedPointer<EDANet>> takeAllWith(const QString &identifier, const QString &pin)
    {
        QList<QSharedPointer<EDANet>> taken;
        // None of these nets is left afterwards, so the entry can go: no position is ever visited twice.
        const auto positions = positionsByPin.take({identifier, pin});
        for (const qsizetype position : positions) {
            if (const auto net = std::exchange(nets[position], {}))
                taken.append(net);
        }
        return taken;
    }

private:
    const Components &components;
    QList<QSharedPointer<EDANet>> nets; ///< null where one was taken out
    qsizetype first = 0;
    QHash<std::pair<QString, QString>, QList<qsizetype>> positionsByPin; ///< by identifier and pin number
};
}

MultipleEDAProvider::MultipleEDAProvider(const QList<EDAProvider *> &netlists,
                                         const QList<QString> &connectorTypes)
    : providers(netlists)
    , connectorComponentTypes(connectorTypes)
{
    prepareParts();
    prepareComponents();
    prepareNets();
}

MultipleEDAProvider::~MultipleEDAProvider() = default;
MultipleEDAProvider::MultipleEDAProvider(const MultipleEDAProvider &other) = default;
MultipleEDAProvider &MultipleEDAProvider::operator=(const MultipleEDAProvider &other) = default;

void MultipleEDAProvider::prepareParts()
{
    for (qsizetype i = 0; i < providers.size(); ++i) {
        const auto partsOfProvider = providers.at(i)->getParts();
        for (const auto &part : partsOfProvider) {
            const auto copy = part->clone();
            copy->name = appendIndex(part->name, i + 1);
            parts.insert(copy->name, copy);
        }
    }
}

void MultipleEDAProvider::prepareComponents()
{
    for (qsizetype i = 0; i < providers.size(); ++i) {
        const auto componentsOfProvider = providers.at(i)->getComponents();
        for (const auto &component : componentsOfProvider) {
            const auto copy = component->clone();
            copy->ref = appendIndex(component->ref, i + 1);
            copy->part = appendIndex(component->part, i + 1);
            components.insert(copy->ref, copy);
        }
    }
}

void MultipleEDAProvider::prepareNets()
{
    PendingNets pending(components);
    for (qsizetype i = 0; i < providers.size(); ++i) {
        const auto netsOfProvider = providers.at(i)->getNets();
        for (const auto &net : netsOfProvider)
            pending.append(copyNetWithRefExtendedByIndex(net, i + 1));
    }

    while (const auto current = pending.takeFirst()) {
        QList<QSharedPointer<EDANet>> joined{current};
        for (const auto &node : std::as_const(current->nodes)) {
            const auto component = componentOfNode(components, node);
            if (component && isConnectorComponent(component))
                joined += pending.takeAllWith(component->identifier(), node->pin);
            if (joined.size() > 1)
                break; // the other nodes get their turn when the joined net is looked at
        }
        if (joined.size() > 1)
            pending.append(combinedNet(joined));
        else
            nets.append(current);
    }
}

bool MultipleEDAProvider::isConnectorComponent(const QSharedPointer<EDAComponent> &component) const
{
    return connectorComponentTypes.contains(component->type(), Qt::CaseInsensitive);
}

QList<QSharedPointer<EDANet>> MultipleEDAProvider::getNets() const
{
    return nets;
}

QList<QSharedPointer<EDAComponent>> MultipleEDAProvider::getComponents() const
{
    return components.values();
}

QSharedPointer<EDAComponent> MultipleEDAProvider::getComponentByRef(const QString &ref) const
{
    return components.value(ref);
}

QSharedPointer<EDAComponent>
MultipleEDAProvider::getComponentByProperties(const QMap<QString, QString> &properties) const
{
    for (const auto &component : components) {
        if (component->matchesProperties(properties))
            return component;
    }
    return {};
}

QList<QSharedPointer<EDAPart>> MultipleEDAProvider::getParts() const
{
    return parts.values();
}

QSharedPointer<EDAPart> MultipleEDAProvider::getPartByName(const QString &name) const
{
    return parts.value(name);
}
}
