#include <velk/provider/MultipleEDAProvider.h>

#include <velk/model/NetlistIndex.h>
#include <velk/model/RoutingLog.h>
#include <velk/provider/NetJoiner.h>

#include <QHash>
#include <QStringList>

#include <algorithm>
#include <list>
#include <typeinfo>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace Velk {

const QString MultipleEDAProvider::DEFAULT_CONNECTOR_COMPONENT_TYPE = u"Connector"_s;

namespace {

QString appendIndex(const QString &text, qsizetype index)
{
    return text + u'#' + QString::number(index);
}

/// The nets of all netlists with their names made unique, and their nodes in numbers.
class NetCopies
{
public:
    explicit NetCopies(const NetlistIndex &components)
        : index(components)
    {
    }

    void add(const QSharedPointer<EDANet> &net, qsizetype netlist)
    {
        const auto copy = EDANet::create(appendIndex(net->name, netlist));
        copy->nodes.reserve(net->nodes.size());
        const QString suffix = appendIndex({}, netlist);
        QString ref;
        for (const auto &node : std::as_const(net->nodes)) {
            ref.resize(0); // keeps its memory for the next
            ref.append(node->ref).append(suffix);
            nodes.push_back(index.numberedNode(ref, node->pin));
            copy->nodes.append(EDANetNode::create(textOf(ref, nodes.back().component), node->pin));
        }
        nets.append(copy);
        firstNodes.push_back(static_cast<int>(nodes.size()));
    }

    int count() const { return static_cast<int>(nets.size()); }
    const QSharedPointer<EDANet> &net(int number) const { return nets.at(number); }
    /// The nodes of a net are firstNode(net) to firstNode(net + 1) - 1.
    int firstNode(int number) const { return firstNodes[static_cast<std::size_t>(number)]; }
    const NumberedNode &numberedNode(int node) const { return nodes[static_cast<std::size_t>(node)]; }

private:
    // Shared with the component.
    QString textOf(const QString &ref, int component) const
    {
        if (component != NetlistIndex::none)
            return index.component(component)->ref;
        qCDebug(routingLog).noquote() << u"No component found for component.ref '%1'"_s.arg(ref);
        return QString(ref.constData(), ref.size());
    }

    const NetlistIndex &index;
    QList<QSharedPointer<EDANet>> nets;
    std::vector<NumberedNode> nodes;
    std::vector<int> firstNodes = {0};
};

/// Numbers the identifiers of connectors. The pins of components without one of these can join nothing.
class ConnectorIdentifiers
{
public:
    ConnectorIdentifiers(const NetlistIndex &components, const QList<QString> &connectorTypes)
        : index(components)
    {
        for (const QString &type : components.componentTypes())
            isConnectorType.push_back(connectorTypes.contains(type, Qt::CaseInsensitive));
        QHash<QString, int> numbers;
        for (int i = 0; i < components.componentCount(); ++i) {
            if (isConnector(i))
                numbers.insert(components.component(i)->identifier(), i);
        }
        for (int i = 0; i < components.componentCount(); ++i)
            identifiers.push_back(numbers.value(components.component(i)->identifier(), NetlistIndex::none));
    }

    bool isConnector(int component) const { return isConnectorType[static_cast<std::size_t>(index.typeOf(component))]; }
    /// NetlistIndex::none where the component's identifier is none of a connector.
    int identifierOf(int component) const { return identifiers[static_cast<std::size_t>(component)]; }

private:
    const NetlistIndex &index;
    std::vector<bool> isConnectorType;
    std::vector<int> identifiers; ///< by component
};

std::vector<std::list<int>> joinCopies(const NetCopies &copies, const NetlistIndex &index,
                                       const QList<QString> &connectorTypes)
{
    const ConnectorIdentifiers connectors(index, connectorTypes);
    NetJoiner joiner;
    for (int net = 0; net < copies.count(); ++net) {
        joiner.addNet();
        for (int node = copies.firstNode(net); node < copies.firstNode(net + 1); ++node) {
            const int component = copies.numberedNode(node).component;
            if (component == NetlistIndex::none)
                continue;
            const int identifier = connectors.identifierOf(component);
            if (identifier != NetlistIndex::none)
                joiner.addPin({identifier, copies.net(net)->nodes.at(node - copies.firstNode(net))->pin},
                              connectors.isConnector(component));
        }
    }
    return joiner.join();
}

QSharedPointer<EDANet> combinedNet(const NetCopies &copies, const std::list<int> &members)
{
    if (members.size() == 1)
        return copies.net(members.front());
    QStringList names;
    auto combined = EDANet::create({});
    for (const int member : members) {
        names.append(copies.net(member)->name);
        combined->nodes += copies.net(member)->nodes;
    }
    combined->name = names.join(u'+');
    return combined;
}

/// Ascending by this text; of several with the same the last.
template <typename Element>
QList<QSharedPointer<Element>> sortedBy(QString Element::*text, QList<QSharedPointer<Element>> elements)
{
    const auto isLess = [text](const auto &a, const auto &b) { return (*a).*text < (*b).*text; };
    const auto isEqual = [text](const auto &a, const auto &b) { return (*a).*text == (*b).*text; };
    std::stable_sort(elements.begin(), elements.end(), isLess);
    const auto firstKept = std::unique(elements.rbegin(), elements.rend(), isEqual).base();
    elements.erase(elements.begin(), firstKept);
    return elements;
}
}

MultipleEDAProvider::MultipleEDAProvider(const QList<EDAProvider *> &netlists, const QList<QString> &connectorTypes)
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
            parts.append(part->clone());
            parts.last()->name = appendIndex(part->name, i + 1);
        }
    }
    parts = sortedBy(&EDAPart::name, std::move(parts));
}

void MultipleEDAProvider::prepareComponents()
{
    for (qsizetype i = 0; i < providers.size(); ++i) {
        const auto componentsOfProvider = providers.at(i)->getComponents();
        for (const auto &component : componentsOfProvider) {
            const auto copy = component->clone();
            copy->ref = appendIndex(component->ref, i + 1);
            copy->part = appendIndex(component->part, i + 1);
            components.append(copy);
        }
    }
    components = sortedBy(&EDAComponent::ref, std::move(components));
}

void MultipleEDAProvider::prepareNets()
{
    const auto numbers = std::make_shared<NetlistIndex>(components, parts);
    NetCopies copies(*numbers);
    for (qsizetype i = 0; i < providers.size(); ++i) {
        const auto netsOfProvider = providers.at(i)->getNets();
        for (const auto &net : netsOfProvider)
            copies.add(net, i + 1);
    }
    const auto joinedNets = joinCopies(copies, *numbers, connectorComponentTypes);
    nets.reserve(static_cast<qsizetype>(joinedNets.size()));
    for (const auto &members : joinedNets) {
        nets.append(combinedNet(copies, members));
        numbers->addNet(nets.last());
        for (const int member : members) {
            for (int node = copies.firstNode(member); node < copies.firstNode(member + 1); ++node)
                numbers->addNode(copies.numberedNode(node));
        }
    }
    index = numbers;
}

// A derived class may answer queries in a way of its own.
const NetlistIndex *MultipleEDAProvider::netlistIndex() const
{
    return typeid(*this) == typeid(MultipleEDAProvider) ? index.get() : nullptr;
}

QList<QSharedPointer<EDANet>> MultipleEDAProvider::getNets() const
{
    return nets;
}

QList<QSharedPointer<EDAComponent>> MultipleEDAProvider::getComponents() const
{
    return components;
}

QSharedPointer<EDAComponent> MultipleEDAProvider::getComponentByRef(const QString &ref) const
{
    return index->componentOf(ref);
}

QSharedPointer<EDAComponent>
MultipleEDAProvider::getComponentByProperties(const QMap<QString, QString> &properties) const
{
    return index->componentWith(properties);
}

QList<QSharedPointer<EDAPart>> MultipleEDAProvider::getParts() const
{
    return parts;
}

QSharedPointer<EDAPart> MultipleEDAProvider::getPartByName(const QString &name) const
{
    return index->partOf(name);
}
}
