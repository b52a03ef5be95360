#include <velk/routing/Routing.h>

#include <velk/model/EDAException.h>
#include <velk/model/IndexedProvider.h>
#include <velk/model/RoutingLog.h>
#include <velk/routing/PathSearch.h>
#include <velk/search/PrunedPathSearch.h>

#include <algorithm>
#include <tuple>

using namespace Qt::StringLiterals;

namespace Velk {

int Routing::DEFAULT_MAX_SWITCHING_COMPONENTS_PER_PATH = 5;
int Routing::DEFAULT_MAX_ADDITIONAL_NODES_PER_PATH = 3;

const QString Routing::DEFAULT_SWITCHABLE_COMPONENT_TYPE_RELAY = u"Relay"_s;
const QString Routing::DEFAULT_SWITCHABLE_COMPONENT_TYPE_RESISTOR = u"Resistor"_s;
const QString Routing::DEFAULT_INTERFACE_COMPONENT_TYPE_SOURCE = u"Source"_s;
const QString Routing::DEFAULT_INTERFACE_COMPONENT_TYPE_DUT = u"DUT"_s;

namespace {

NodeWithComponent findNode(const EDAProvider &provider, const QSharedPointer<EDAComponent> &component,
                           const QMap<QString, QString> &properties, const QString &pinNumberOrName)
{
    if (component.isNull())
        throw EDAComponentNotFoundException(properties);
    const auto part = provider.getPartByName(component->part);
    if (part.isNull())
        throw EDAPartNotFoundException(component, component->part);
    const auto pin = part->getPinByNumberOrName(pinNumberOrName);
    if (pin.isNull())
        throw EDAPinNotFoundException(part, component, pinNumberOrName);
    return {EDANetNode::create(component->ref, pin->number), component};
}

NodeWithComponent findNode(const EDAProvider &provider, const QMap<QString, QString> &properties,
                           const QString &pinNumberOrName)
{
    return findNode(provider, provider.getComponentByProperties(properties), properties, pinNumberOrName);
}

bool comesFirst(const RoutingPath &a, const RoutingPath &b)
{
    const auto key = [](const RoutingPath &path) {
        return std::tuple(path.switchingComponents.size(), path.additionalNodes.size());
    };
    return key(a) < key(b);
}
}

Routing::Routing(EDAProvider *netlist)
    : provider(netlist)
    , maxSwitchingComponentsPerPath(DEFAULT_MAX_SWITCHING_COMPONENTS_PER_PATH)
    , maxAdditionalNodesPerPath(DEFAULT_MAX_ADDITIONAL_NODES_PER_PATH)
    , maxPaths(0)
    , switchableTypes{DEFAULT_SWITCHABLE_COMPONENT_TYPE_RELAY, DEFAULT_SWITCHABLE_COMPONENT_TYPE_RESISTOR}
    , interfaceTypes{DEFAULT_INTERFACE_COMPONENT_TYPE_SOURCE, DEFAULT_INTERFACE_COMPONENT_TYPE_DUT}
{
}

Routing::~Routing() = default;
Routing::Routing(const Routing &other) = default;
Routing &Routing::operator=(const Routing &other) = default;
Routing::Routing(Routing &&other) noexcept = default;
Routing &Routing::operator=(Routing &&other) noexcept = default;

void Routing::setComponentTypesThatAreSwitchable(const QList<QString> &types)
{
    switchableTypes = types;
}

void Routing::setComponentTypesThatAreInterfaces(const QList<QString> &types)
{
    interfaceTypes = types;
}

void Routing::setMaxSwitchingComponentsPerPath(int limit)
{
    maxSwitchingComponentsPerPath = limit;
}

void Routing::setMaxAdditionalNodesPerPath(int limit)
{
    maxAdditionalNodesPerPath = limit;
}

void Routing::setMaxPaths(qsizetype bound)
{
    maxPaths = bound;
}

// One more than the limit of switches. The limit is documented to wrap, so the largest one leads to a negative number;
// unsigned, since overflow of signed numbers is undefined.
int Routing::maxNetsSearchedPerPath() const
{
    return static_cast<int>(static_cast<unsigned int>(maxSwitchingComponentsPerPath) + 1U);
}

bool Routing::isComponentSwitchable(const QSharedPointer<EDAComponent> &component) const
{
    return switchableTypes.contains(component->type(), Qt::CaseInsensitive);
}

bool Routing::isComponentInterface(const QSharedPointer<EDAComponent> &component) const
{
    return interfaceTypes.contains(component->type(), Qt::CaseInsensitive);
}

QList<RoutingPath> Routing::findPaths(const QMap<QString, QString> &sourceProperties, const QString &sourcePin,
                                      const QMap<QString, QString> &destinationProperties,
                                      const QString &destinationPin) const
{
    const auto source = findNode(*provider, sourceProperties, sourcePin);
    return search(source, findNode(*provider, destinationProperties, destinationPin));
}

QList<RoutingPath> Routing::findPathsBetween(const QSharedPointer<EDAComponent> &source, const QString &sourcePin,
                                             const QSharedPointer<EDAComponent> &destination,
                                             const QString &destinationPin) const
{
    const auto sourceNode = findNode(*provider, source, {}, sourcePin);
    return search(sourceNode, findNode(*provider, destination, {}, destinationPin));
}

QList<RoutingPath> Routing::search(const NodeWithComponent &source, const NodeWithComponent &destination) const
{
    const auto *indexed = dynamic_cast<const IndexedProvider *>(provider);
    const NetlistIndex *index = indexed ? indexed->netlistIndex() : nullptr;
    // The trace shows every net that an exhaustive search visits.
    if (index && !routingLog().isDebugEnabled()) {
        const auto rules = rulesFor(*index, source, destination);
        if (rules.hasEnds())
            return PrunedPathSearch(*index, rules, maxPaths).run();
    }
    auto paths = PathSearch(*this, source, destination.node).run();
    // Stable, so that the same netlist always gives the same order.
    std::stable_sort(paths.begin(), paths.end(), comesFirst);
    return paths;
}

SearchRules Routing::rulesFor(const NetlistIndex &index, const NodeWithComponent &source,
                              const NodeWithComponent &destination) const
{
    SearchRules rules{index.numberedNode(source.node->ref, source.node->pin).terminal,
                      index.numberedNode(destination.node->ref, destination.node->pin).terminal,
                      maxNetsSearchedPerPath(),
                      maxAdditionalNodesPerPath,
                      {}};
    const auto &types = index.componentTypes();
    rules.roles.reserve(static_cast<std::size_t>(types.size()));
    for (const QString &type : types)
        rules.roles.push_back(
            {switchableTypes.contains(type, Qt::CaseInsensitive), interfaceTypes.contains(type, Qt::CaseInsensitive)});
    rules.roles[NetlistIndex::unlisted] = {false, false};
    return rules;
}
}
