#include <velk/provider/MultipleEDAProvider.h>

#include <velk/index/NetlistIndex.h>
#include <velk/model/ElementOwner.h>
#include <velk/model/RoutingLog.h>
#include <velk/provider/NetJoiner.h>

#include <QHash>
#include <QStringBuilder>
#include <QStringList>

#include <algorithm>
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

/// The nets of all netlists with their names made unique, and their nodes in numbers.
class NetCopies
{
public:
    explicit NetCopies(const NetlistIndex &components)
        : index(components)
    {
        ref.reserve(64);
    }

    void add(const QSharedPointer<EDANet> &net, const QString &suffix)
    {
        const auto copy = EDANet::create(net->name % suffix);
        copy->nodes.reserve(net->nodes.size());
        for (const auto &node : std::as_const(net->nodes)) {
            if (!node)
                continue;
            ref.resize(0);
            ref.append(node->ref).append(suffix);
            nodes.push_back(index.numberedNode(ref, node->pin));
            copy->nodes.append(EDANetNode::create(textOfRef(nodes.back().component), node->pin));
        }
        nets.append(copy);
        firstNodes.push_back(static_cast<int>(nodes.size()));
    }

    int count() const { return static_cast<int>(nets.size()); }
    qsizetype nodeCount() const { return static_cast<qsizetype>(nodes.size()); }
    const QSharedPointer<EDANet> &net(int number) const { return nets.at(number); }
    const QList<QSharedPointer<EDANet>> &allNets() const { return nets; }
    /// The nodes of a net are firstNode(net) to firstNode(net + 1) - 1.
    int firstNode(int number) const { return firstNodes[static_cast<std::size_t>(number)]; }
    const NumberedNode &numberedNode(int node) const { return nodes[static_cast<std::size_t>(node)]; }

private:
    // Shared with the component.
    QString textOfRef(int component) const
    {
        if (component != NetlistIndex::none)
            return index.component(component)->ref;
        logRouting([&] { return u"No component found for component.ref '%1'"_s.arg(ref); });
        return QString(ref.constData(), ref.size());
    }

    const NetlistIndex &index;
    QList<QSharedPointer<EDANet>> nets;
    std::vector<NumberedNode> nodes;
    std::vector<int> firstNodes = {0};
    QString ref; ///< of the node being added; keeps its memory for the next
};

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

void giveTo(NetJoiner &joiner, const NetCopies &copies, const NetlistIndex &index, const Connectors &connectors)
{
    for (int net = 0; net < copies.count(); ++net) {
        joiner.addNet();
        const int first = copies.firstNode(net);
        for (int node = first; node < copies.firstNode(net + 1); ++node) {
            const int component = copies.numberedNode(node).component;
            if (component == NetlistIndex::none || !connectors.canJoin(component))
                continue;
            const QString &pin = copies.net(net)->nodes.at(node - first)->pin;
            joiner.addPin({index.identifierOf(component), pin}, connectors.isConnector(component));
        }
    }
}

/// The copies that are joined to one net, from the first on.
QSharedPointer<EDANet> combinedNet(const NetCopies &copies, const NetJoiner &joiner, int first)
{
    if (joiner.nextMember(first) == NetJoiner::none)
        return copies.net(first);
    QStringList names;
    auto combined = EDANet::create({});
    for (int member = first; member != NetJoiner::none; member = joiner.nextMember(member)) {
        names.append(copies.net(member)->name);
        combined->nodes += copies.net(member)->nodes;
    }
    combined->name = names.join(u'+');
    return combined;
}

/// Brings the elements into ascending order of this text and keeps the last of those with the same.
template <typename Element>
void sortBy(QString Element::*text, QList<QSharedPointer<Element>> &elements)
{
    const auto isLess = [text](const auto &a, const auto &b) { return (*a).*text < (*b).*text; };
    const auto isEqual = [text](const auto &a, const auto &b) { return (*a).*text == (*b).*text; };
    std::stable_sort(elements.begin(), elements.end(), isLess);
    const auto firstKept = std::unique(elements.rbegin(), elements.rend(), isEqual).base();
    elements.erase(elements.begin(), firstKept);
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
        prepareComponents();
        prepareNets();
    }

    const QList<EDAProvider *> providers;
    const QList<QString> connectorComponentTypes;
    QList<QSharedPointer<EDANet>> nets;
    QList<QSharedPointer<EDANet>> netsOfBoards;
    std::vector<qsizetype> joinedNets;              ///< by the number of the board's net
    QList<QSharedPointer<EDAPart>> parts;           ///< by name
    QList<QSharedPointer<EDAComponent>> components; ///< by reference
    std::shared_ptr<const NetlistIndex> index;

private:
    void prepareParts();
    void prepareComponents();
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
    for (qsizetype i = 0; i < providers.size(); ++i) {
        const QString suffix = suffixOf(i);
        const auto partsOfProvider = partsOf(*providers.at(i));
        for (const auto &part : partsOfProvider) {
            if (!part)
                continue;
            parts.append(part->clone());
            parts.last()->name = part->name % suffix;
        }
    }
    sortBy(&EDAPart::name, parts);
}

void MultipleEDAProviderPrivate::prepareComponents()
{
    for (qsizetype i = 0; i < providers.size(); ++i) {
        const QString suffix = suffixOf(i);
        QHash<QString, QString> partNames; // shared by the components
        const auto componentsOfProvider = componentsOf(*providers.at(i));
        for (const auto &component : componentsOfProvider) {
            if (!component)
                continue;
            const auto copy = component->clone();
            QString &partName = partNames[component->part];
            if (partName.isEmpty())
                partName = component->part % suffix;
            copy->ref = component->ref % suffix;
            copy->part = partName;
            components.append(copy);
        }
    }
    sortBy(&EDAComponent::ref, components);
}

void MultipleEDAProviderPrivate::prepareNets()
{
    const auto numbers = std::make_shared<NetlistIndex>(components, parts);
    NetCopies copies(*numbers);
    for (qsizetype i = 0; i < providers.size(); ++i) {
        const QString suffix = suffixOf(i);
        const auto netsOfProvider = netsOf(*providers.at(i));
        for (const auto &net : netsOfProvider) {
            if (net)
                copies.add(net, suffix);
        }
    }
    NetJoiner joiner(copies.count());
    giveTo(joiner, copies, *numbers, Connectors(*numbers, connectorComponentTypes));

    const auto finishedNets = joiner.join();
    nets.reserve(static_cast<qsizetype>(finishedNets.size()));
    numbers->reserveNets(static_cast<qsizetype>(finishedNets.size()), copies.nodeCount());
    netsOfBoards = copies.allNets();
    joinedNets.resize(static_cast<std::size_t>(copies.count()));
    for (const int first : finishedNets) {
        nets.append(combinedNet(copies, joiner, first));
        numbers->addNet(nets.last());
        for (int member = first; member != NetJoiner::none; member = joiner.nextMember(member)) {
            joinedNets[static_cast<std::size_t>(member)] = nets.size() - 1;
            for (int node = copies.firstNode(member); node < copies.firstNode(member + 1); ++node)
                numbers->addNode(copies.numberedNode(node));
        }
    }
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
    return d->netsOfBoards;
}

qsizetype MultipleEDAProvider::joinedNetOf(qsizetype boardNet) const
{
    return d->joinedNets.at(static_cast<std::size_t>(boardNet));
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
