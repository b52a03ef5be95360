#include <velk/routing/Routing.h>

#include <velk/model/EDAException.h>
#include <velk/routing/NoPathSearch.h>
#include <velk/routing/RoutingPrivate.h>
#include <velk/search/SearchRules.h>

using namespace Qt::StringLiterals;

namespace Velk {

int Routing::DEFAULT_MAX_SWITCHING_COMPONENTS_PER_PATH = 5;
int Routing::DEFAULT_MAX_ADDITIONAL_NODES_PER_PATH = 3;

const QString Routing::DEFAULT_SWITCHABLE_COMPONENT_TYPE_RELAY = u"Relay"_s;
const QString Routing::DEFAULT_SWITCHABLE_COMPONENT_TYPE_RESISTOR = u"Resistor"_s;
const QString Routing::DEFAULT_INTERFACE_COMPONENT_TYPE_SOURCE = u"Source"_s;
const QString Routing::DEFAULT_INTERFACE_COMPONENT_TYPE_DUT = u"DUT"_s;
const QString Routing::DEFAULT_CONNECTOR_COMPONENT_TYPE = u"Connector"_s;

namespace {

NodeWithComponent findNode(const EDAProvider &provider, const QSharedPointer<EDAComponent> &component,
                           const QString &pinNumberOrName)
{
    if (component.isNull())
        throw EDAComponentNotFoundException({});
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
    const auto component = provider.getComponentByProperties(properties);
    if (component.isNull())
        throw EDAComponentNotFoundException(properties);
    return findNode(provider, component, pinNumberOrName);
}

/// Each \a Component is given by its properties or itself.
template <typename Path, typename Component>
QList<Path> find(const RoutingPrivate &routing, const RoutingRules &rules, const Component &source,
                 const QString &sourcePin, const Component &destination, const QString &destinationPin)
{
    if (const auto *index = routing.searchedIndex()) {
        const SearchRules numbered(rules, *index, index->pinOf(source, sourcePin),
                                   index->pinOf(destination, destinationPin));
        if (numbered.hasEnds())
            return routing.search<Path>(*index, rules, numbered);
    }
    const auto sourceNode = findNode(*routing.provider, source, sourcePin);
    return routing.searchExhaustively<Path>(rules, sourceNode,
                                            findNode(*routing.provider, destination, destinationPin));
}
}

Routing::Routing(EDAProvider *netlist)
    : d(new RoutingPrivate(netlist,
                           {{{DEFAULT_SWITCHABLE_COMPONENT_TYPE_RELAY, DEFAULT_SWITCHABLE_COMPONENT_TYPE_RESISTOR},
                             {DEFAULT_INTERFACE_COMPONENT_TYPE_SOURCE, DEFAULT_INTERFACE_COMPONENT_TYPE_DUT}},
                            DEFAULT_MAX_SWITCHING_COMPONENTS_PER_PATH,
                            DEFAULT_MAX_ADDITIONAL_NODES_PER_PATH,
                            0},
                           {DEFAULT_CONNECTOR_COMPONENT_TYPE}))
{
}

Routing::~Routing() = default;
Routing::Routing(const Routing &other) = default;
Routing &Routing::operator=(const Routing &other) = default;
Routing::Routing(Routing &&other) noexcept = default;
Routing &Routing::operator=(Routing &&other) noexcept = default;

void Routing::setComponentTypesThatAreSwitchable(const QList<QString> &types)
{
    d->rules.roles.switchableTypes = types;
}

QList<QString> Routing::componentTypesThatAreSwitchable() const
{
    return d->rules.roles.switchableTypes;
}

void Routing::setComponentTypesThatAreInterfaces(const QList<QString> &types)
{
    d->rules.roles.interfaceTypes = types;
}

QList<QString> Routing::componentTypesThatAreInterfaces() const
{
    return d->rules.roles.interfaceTypes;
}

void Routing::setComponentTypesThatAreConnectors(const QList<QString> &types)
{
    d->connectorTypes = types;
}

QList<QString> Routing::componentTypesThatAreConnectors() const
{
    return d->connectorTypes;
}

void Routing::setMaxSwitchingComponentsPerPath(int limit)
{
    d->rules.maxSwitchingComponents = limit;
}

int Routing::maxSwitchingComponentsPerPath() const
{
    return d->rules.maxSwitchingComponents;
}

void Routing::setMaxAdditionalNodesPerPath(int limit)
{
    d->rules.maxAdditionalNodes = limit;
}

int Routing::maxAdditionalNodesPerPath() const
{
    return d->rules.maxAdditionalNodes;
}

void Routing::setMaxPaths(qsizetype bound)
{
    d->rules.maxPaths = bound;
}

qsizetype Routing::maxPaths() const
{
    return d->rules.maxPaths;
}

void Routing::setExcludedComponents(const QList<QString> &refs)
{
    d->exclude(refs, excludedNets());
}

QList<QString> Routing::excludedComponents() const
{
    return d->rules.exclusions ? d->rules.exclusions->componentRefs() : QList<QString>();
}

void Routing::setExcludedNets(const QList<QString> &names)
{
    d->exclude(excludedComponents(), names);
}

QList<QString> Routing::excludedNets() const
{
    return d->rules.exclusions ? d->rules.exclusions->netNames() : QList<QString>();
}

QList<QString> Routing::unknownExclusions() const
{
    return d->unknownExclusions();
}

void Routing::setRequiredComponents(const QList<QString> &refs)
{
    d->rules.requiredComponents = refs;
}

QList<QString> Routing::requiredComponents() const
{
    return d->rules.requiredComponents;
}

void Routing::setRelayContacts(const QSharedPointer<const RelayContactMap> &contacts)
{
    d->relayContacts = contacts;
}

QSharedPointer<const RelayContactMap> Routing::relayContacts() const
{
    return d->relayContacts;
}

void Routing::setInterruption(const std::function<bool()> &isCalledOff)
{
    d->isCalledOff = isCalledOff;
}

std::function<bool()> Routing::interruption() const
{
    return d->isCalledOff;
}

QList<RoutingPath> Routing::findPaths(const QMap<QString, QString> &sourceProperties, const QString &sourcePin,
                                      const QMap<QString, QString> &destinationProperties,
                                      const QString &destinationPin) const
{
    return find<RoutingPath>(*d, d->rules, sourceProperties, sourcePin, destinationProperties, destinationPin);
}

QList<RoutingPath> Routing::findPathsBetween(const QSharedPointer<EDAComponent> &source, const QString &sourcePin,
                                             const QSharedPointer<EDAComponent> &destination,
                                             const QString &destinationPin) const
{
    return find<RoutingPath>(*d, d->rules, source, sourcePin, destination, destinationPin);
}

QList<TracedPath> Routing::findTracedPaths(const QMap<QString, QString> &sourceProperties, const QString &sourcePin,
                                           const QMap<QString, QString> &destinationProperties,
                                           const QString &destinationPin) const
{
    return find<TracedPath>(*d, d->tracedRules(), sourceProperties, sourcePin, destinationProperties, destinationPin);
}

QList<TracedPath> Routing::findTracedPathsBetween(const QSharedPointer<EDAComponent> &source, const QString &sourcePin,
                                                  const QSharedPointer<EDAComponent> &destination,
                                                  const QString &destinationPin) const
{
    return find<TracedPath>(*d, d->tracedRules(), source, sourcePin, destination, destinationPin);
}

qsizetype Routing::countPathsBetween(const QSharedPointer<EDAComponent> &source, const QString &sourcePin,
                                     const QSharedPointer<EDAComponent> &destination,
                                     const QString &destinationPin) const
{
    RoutingRules rules = d->rules;
    rules.maxPaths = 0;
    if (const auto *index = d->searchedIndex()) {
        const SearchRules numbered(rules, *index, index->pinOf(source, sourcePin),
                                   index->pinOf(destination, destinationPin));
        if (numbered.hasEnds())
            return d->count(*index, rules, numbered);
    }
    const auto sourceNode = findNode(*d->provider, source, sourcePin);
    return d->countExhaustively(rules, sourceNode, findNode(*d->provider, destination, destinationPin));
}

NoPathReason Routing::explainNoPath(const QMap<QString, QString> &sourceProperties, const QString &sourcePin,
                                    const QMap<QString, QString> &destinationProperties,
                                    const QString &destinationPin) const
{
    const auto source = findNode(*d->provider, sourceProperties, sourcePin);
    return NoPathSearch(*d, source, findNode(*d->provider, destinationProperties, destinationPin)).reason();
}

NoPathReason Routing::explainNoPathBetween(const QSharedPointer<EDAComponent> &source, const QString &sourcePin,
                                           const QSharedPointer<EDAComponent> &destination,
                                           const QString &destinationPin) const
{
    const auto sourceNode = findNode(*d->provider, source, sourcePin);
    return NoPathSearch(*d, sourceNode, findNode(*d->provider, destination, destinationPin)).reason();
}
}
