#include <velk/provider/MultipleEDAProvider.h>

#include <velk/index/NetlistIndex.h>
#include <velk/model/ElementOwner.h>
#include <velk/model/RoutingLog.h>
#include <velk/provider/ElementCopies.h>
#include <velk/provider/NetJoiner.h>

#include <QStringBuilder>

#include <typeinfo>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace Velk {

const QString MultipleEDAProvider::DEFAULT_CONNECTOR_COMPONENT_TYPE = u"Connector"_s;

namespace {

// Only copies of what they give are kept and handed out, so none need be made on the way.

QList<QSharedPointer<EDAPart>> partsOf(const EDAProvider &provider)
{
    const auto *owner = dynamic_cast<const ElementOwner *>(&provider);
    return owner ? owner->ownParts() : provider.getParts();
}

QList<QSharedPointer<EDAComponent>> componentsOf(const EDAProvider &provider)
{
    const auto *owner = dynamic_cast<const ElementOwner *>(&provider);
    return owner ? owner->ownComponents() : provider.getComponents();
}

QList<QSharedPointer<EDANet>> netsOf(const EDAProvider &provider)
{
    const auto *owner = dynamic_cast<const ElementOwner *>(&provider);
    return owner ? owner->ownNets() : provider.getNets();
}

/// What makes names of the netlist at this position unique.
QString suffixOf(qsizetype position)
{
    return u'#' + QString::number(position + 1);
}

/// Tells which components are connectors and which can be met by one.
class Connectors
{
public:
    Connectors(const NetlistIndex &components, const QList<QString> &connectorTypes)
        : index(components)
    {
        for (const QString &type : components.componentTypes())
            isConnectorType.push_back(connectorTypes.contains(type, Qt::CaseInsensitive));
        isOfConnector.resize(static_cast<std::size_t>(components.identifierCount()));
        for (int i = 0; i < components.componentCount(); ++i) {
            if (isConnector(i))
                isOfConnector[static_cast<std::size_t>(components.identifierOf(i))] = true;
        }
    }

    bool isConnector(int component) const { return isConnectorType[static_cast<std::size_t>(index.typeOf(component))]; }
    /// Whether the component has the identifier of a connector, of its own or another's.
    bool canJoin(int component) const { return isOfConnector[static_cast<std::size_t>(index.identifierOf(component))]; }

private:
    const NetlistIndex &index;
    std::vector<bool> isConnectorType;
    std::vector<bool> isOfConnector; ///< by identifier
};

using ComponentCopies = ElementCopies<EDAComponent>;

/// The nets of all netlists with their names made unique, and their nodes in numbers.
class NetCopies
{
public:
    NetCopies(const ComponentCopies &componentCopies, const NetlistIndex &numbers, const QList<QString> &connectorTypes)
        : components(componentCopies)
        , index(numbers)
        , connectors(numbers, connectorTypes)
    {
    }

    void add(const EDANet &net, qsizetype netlist, QStringView suffix)
    {
        const auto copy = EDANet::create(net.name % suffix);
        copy->nodes.reserve(net.nodes.size());
        joiner.addNet();
        for (const auto &node : net.nodes) {
            if (!node)
                continue;
            const int component = components.numberOf(netlist, node->ref);
            nodes.push_back(index.numberedNode(component, node->pin));
            copy->nodes.append(EDANetNode::create(refOf(component, *node, suffix), node->pin));
            if (component != NetlistIndex::none && connectors.canJoin(component))
                joiner.addPin(index.identifierOf(component), node->pin, connectors.isConnector(component));
        }
        nets.append(copy);
        firstNodes.push_back(static_cast<int>(nodes.size()));
    }

    /// As NetJoiner::join().
    std::vector<int> join() { return joiner.join(); }
    int nextMember(int net) const { return joiner.nextMember(net); }

    int count() const { return static_cast<int>(nets.size()); }
    qsizetype nodeCount() const { return static_cast<qsizetype>(nodes.size()); }
    const QSharedPointer<EDANet> &net(int number) const { return nets.at(number); }
    const QList<QSharedPointer<EDANet>> &allNets() const { return nets; }
    /// The nodes of a net are firstNode(net) to firstNode(net + 1) - 1.
    int firstNode(int number) const { return firstNodes[static_cast<std::size_t>(number)]; }
    const NumberedNode &numberedNode(int node) const { return nodes[static_cast<std::size_t>(node)]; }

private:
    QString refOf(int component, const EDANetNode &node, QStringView suffix) const
    {
        if (component != NetlistIndex::none)
            return index.component(component)->ref; // shared
        QString ref = node.ref % suffix;
        logRouting([&] { return u"No component found for component.ref '%1'"_s.arg(ref); });
        return ref;
    }

    const ComponentCopies &components;
    const NetlistIndex &index;
    const Connectors connectors;
    NetJoiner joiner;
    QList<QSharedPointer<EDANet>> nets;
    std::vector<NumberedNode> nodes;
    std::vector<int> firstNodes = {0};
};

/// The copies that are joined to one net, from the first on.
QSharedPointer<EDANet> combinedNet(const NetCopies &copies, int first)
{
    if (copies.nextMember(first) == NetJoiner::none)
        return copies.net(first);
    qsizetype nameSize = 0;
    qsizetype nodeCount = 0;
    for (int member = first; member != NetJoiner::none; member = copies.nextMember(member)) {
        nameSize += copies.net(member)->name.size() + 1;
        nodeCount += copies.net(member)->nodes.size();
    }
    auto combined = EDANet::create({});
    combined->name.reserve(nameSize);
    combined->nodes.reserve(nodeCount);
    for (int member = first; member != NetJoiner::none; member = copies.nextMember(member)) {
        if (member != first)
            combined->name.append(u'+');
        combined->name.append(copies.net(member)->name);
        combined->nodes.append(copies.net(member)->nodes);
    }
    return combined;
}
}

/// What is made in the constructor, and read-only afterwards.
class MultipleEDAProviderPrivate
{
public:
    MultipleEDAProviderPrivate(const QList<EDAProvider *> &netlists, const QList<QString> &connectorTypes)
        : providers(netlists)
        , connectorComponentTypes(connectorTypes)
    {
        prepareParts();
        prepareNets();
    }

    const QList<EDAProvider *> providers;
    const QList<QString> connectorComponentTypes;
    QList<QSharedPointer<EDANet>> nets;
    QList<QSharedPointer<EDAPart>> parts;           ///< by name
    QList<QSharedPointer<EDAComponent>> components; ///< by reference
    std::shared_ptr<const NetlistIndex> index;

private:
    void prepareParts();
    ComponentCopies prepareComponents(NetlistIndex &netlist);
    void prepareNets();
};

MultipleEDAProvider::MultipleEDAProvider(const QList<EDAProvider *> &netlists, const QList<QString> &connectorTypes)
    : d(std::make_shared<const MultipleEDAProviderPrivate>(netlists, connectorTypes))
{
}

MultipleEDAProvider::~MultipleEDAProvider() = default;
MultipleEDAProvider::MultipleEDAProvider(const MultipleEDAProvider &other) = default;
MultipleEDAProvider &MultipleEDAProvider::operator=(const MultipleEDAProvider &other) = default;
MultipleEDAProvider::MultipleEDAProvider(MultipleEDAProvider &&other) noexcept = default;
MultipleEDAProvider &MultipleEDAProvider::operator=(MultipleEDAProvider &&other) noexcept = default;

void MultipleEDAProviderPrivate::prepareParts()
{
    ElementCopies<EDAPart> copies(&EDAPart::name);
    for (qsizetype i = 0; i < providers.size(); ++i) {
        const QString suffix = suffixOf(i);
        const auto partsOfProvider = partsOf(*providers.at(i));
        copies.beginNetlist(suffix, partsOfProvider.size());
        for (const auto &part : partsOfProvider) {
            if (!part)
                continue;
            const auto copy = part->clone();
            copy->name = part->name % QStringView(suffix);
            copies.add(copy);
        }
    }
    parts = copies.elements(copies.inOrder());
}

ComponentCopies MultipleEDAProviderPrivate::prepareComponents(NetlistIndex &netlist)
{
    ComponentCopies copies(&EDAComponent::ref);
    for (qsizetype i = 0; i < providers.size(); ++i) {
        const QString suffix = suffixOf(i);
        TextNumbers<QString> partsInNetlist;
        QList<QString> partNames; // shared by the components
        const auto componentsOfProvider = componentsOf(*providers.at(i));
        copies.beginNetlist(suffix, componentsOfProvider.size());
        for (const auto &component : componentsOfProvider) {
            if (!component)
                continue;
            const int part = partsInNetlist.add(component->part);
            if (part == partNames.size())
                partNames.append(component->part % QStringView(suffix));
            const auto copy =
                EDAComponent::create(component->ref % QStringView(suffix), component->value, partNames.at(part));
            copy->properties = component->properties;
            netlist.setComponent(copies.add(copy), copy);
        }
    }
    const auto numbers = copies.inOrder();
    components = copies.elements(numbers);
    netlist.finishComponents(components, numbers);
    return copies;
}

void MultipleEDAProviderPrivate::prepareNets()
{
    const auto numbers = std::make_shared<NetlistIndex>(parts);
    const auto componentCopies = prepareComponents(*numbers);
    NetCopies copies(componentCopies, *numbers, connectorComponentTypes);
    for (qsizetype i = 0; i < providers.size(); ++i) {
        const QString suffix = suffixOf(i);
        const auto netsOfProvider = netsOf(*providers.at(i));
        for (const auto &net : netsOfProvider) {
            if (net)
                copies.add(*net, i, suffix);
        }
    }
    const auto finishedNets = copies.join();
    nets.reserve(static_cast<qsizetype>(finishedNets.size()));
    numbers->reserveNets(static_cast<qsizetype>(finishedNets.size()), copies.nodeCount());
    std::vector<int> joinedNets(static_cast<std::size_t>(copies.count())); // by the number of the board's net
    for (const int first : finishedNets) {
        nets.append(combinedNet(copies, first));
        numbers->addNet(nets.last());
        for (int member = first; member != NetJoiner::none; member = copies.nextMember(member)) {
            joinedNets[static_cast<std::size_t>(member)] = static_cast<int>(nets.size()) - 1;
            for (int node = copies.firstNode(member); node < copies.firstNode(member + 1); ++node)
                numbers->addNode(copies.numberedNode(node));
        }
    }
    numbers->setBoardNets(copies.allNets(), std::move(joinedNets));
    numbers->prepareSearches();
    index = numbers;
}

// A derived class may answer queries in a way of its own.
const NetlistIndex *MultipleEDAProvider::netlistIndex() const
{
    return typeid(*this) == typeid(MultipleEDAProvider) && d->index->hasTerminals() ? d->index.get() : nullptr;
}

qsizetype MultipleEDAProvider::netlistCount() const
{
    return d->providers.size();
}

QList<QString> MultipleEDAProvider::connectorTypes() const
{
    return d->connectorComponentTypes;
}

QList<QSharedPointer<EDANet>> MultipleEDAProvider::boardNets() const
{
    return d->index->boardNets();
}

qsizetype MultipleEDAProvider::joinedNetOf(qsizetype boardNet) const
{
    return d->index->joinedNetOf(boardNet);
}

QList<QSharedPointer<EDANet>> MultipleEDAProvider::getNets() const
{
    return d->nets;
}

QList<QSharedPointer<EDAComponent>> MultipleEDAProvider::getComponents() const
{
    return d->components;
}

QSharedPointer<EDAComponent> MultipleEDAProvider::getComponentByRef(const QString &ref) const
{
    return d->index->componentOf(ref);
}

QSharedPointer<EDAComponent>
MultipleEDAProvider::getComponentByProperties(const QMap<QString, QString> &properties) const
{
    return d->index->componentWith(properties);
}

QList<QSharedPointer<EDAPart>> MultipleEDAProvider::getParts() const
{
    return d->parts;
}

QSharedPointer<EDAPart> MultipleEDAProvider::getPartByName(const QString &name) const
{
    return d->index->partOf(name);
}
}
