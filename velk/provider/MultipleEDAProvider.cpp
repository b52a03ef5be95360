#include <velk/provider/MultipleEDAProvider.h>

#include <velk/model/NetlistIndex.h>
#include <velk/provider/NetJoiner.h>

#include <typeinfo>

using namespace Qt::StringLiterals;

namespace Velk {

const QString MultipleEDAProvider::DEFAULT_CONNECTOR_COMPONENT_TYPE = u"Connector"_s;

namespace {

QString appendIndex(const QString &text, qsizetype index)
{
    return u"%1#%2"_s.arg(text, QString::number(index));
}

QSharedPointer<EDANet> copyNetWithRefExtendedByIndex(const QSharedPointer<EDANet> &net, qsizetype index)
{
    auto copy = EDANet::create(appendIndex(net->name, index));
    copy->nodes.reserve(net->nodes.size());
    for (const auto &node : std::as_const(net->nodes))
        copy->addNode(appendIndex(node->ref, index), node->pin);
    return copy;
}
}

MultipleEDAProvider::MultipleEDAProvider(const QList<EDAProvider *> &netlists, const QList<QString> &connectorTypes)
    : providers(netlists)
    , connectorComponentTypes(connectorTypes)
{
    prepareParts();
    prepareComponents();
    prepareNets();
    index = std::make_shared<const NetlistIndex>(nets, components, parts);
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
    QList<QSharedPointer<EDANet>> copies;
    for (qsizetype i = 0; i < providers.size(); ++i) {
        const auto netsOfProvider = providers.at(i)->getNets();
        for (const auto &net : netsOfProvider)
            copies.append(copyNetWithRefExtendedByIndex(net, i + 1));
    }
    const auto isConnector = [this](const auto &component) { return isConnectorComponent(component); };
    nets = NetJoiner(copies, components, isConnector).join();
}

// A derived class may answer queries in a way of its own.
const NetlistIndex *MultipleEDAProvider::netlistIndex() const
{
    return typeid(*this) == typeid(MultipleEDAProvider) ? index.get() : nullptr;
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
    return index->componentWith(properties);
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
