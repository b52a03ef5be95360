#include <velk/routing/Routing.h>

#include <velk/model/EDAException.h>
#include <velk/model/IndexedProvider.h>
#include <velk/model/RoutingLog.h>
#include <velk/routing/PathRecords.h>
#include <velk/routing/PathSearch.h>
#include <velk/routing/RoutingPrivate.h>
#include <velk/search/PrunedPathSearch.h>

#include <algorithm>
#include <type_traits>
#include <utility>

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

qsizetype switchCount(const RoutingPath &path)
{
    return path.switchingComponents.size();
}

qsizetype switchCount(const TracedPath &path)
{
    return path.steps.size();
}
}

template <typename Path>
QList<Path> RoutingPrivate::search(const NodeWithComponent &source, const NodeWithComponent &destination) const
{
    const auto *indexed = dynamic_cast<const IndexedProvider *>(provider);
    const NetlistIndex *index = indexed ? indexed->netlistIndex() : nullptr;
    // The trace shows every net that an exhaustive search visits.
    if (index && !routingLog().isDebugEnabled()) {
        const SearchRules numbered(rules, *index, *source.node, *destination.node);
        if (numbered.hasEnds())
            return pathsOf<Path>(PrunedPathSearch(*index, numbered, std::is_same_v<Path, TracedPath>).run(), *index);
    }
    QList<Path> paths;
    PathSearch search(*provider, rules, source, destination.node);
    search.run([&] { paths.append(search.path<Path>()); });
    // Stable, so that the same netlist always gives the same order.
    std::stable_sort(paths.begin(), paths.end(), [](const Path &a, const Path &b) {
        return std::pair(switchCount(a), a.additionalNodes.size()) <
               std::pair(switchCount(b), b.additionalNodes.size());
    });
    return paths;
}

Routing::Routing(EDAProvider *netlist)
    : d(new RoutingPrivate(netlist,
                           {{DEFAULT_SWITCHABLE_COMPONENT_TYPE_RELAY, DEFAULT_SWITCHABLE_COMPONENT_TYPE_RESISTOR},
                            {DEFAULT_INTERFACE_COMPONENT_TYPE_SOURCE, DEFAULT_INTERFACE_COMPONENT_TYPE_DUT},
                            DEFAULT_MAX_SWITCHING_COMPONENTS_PER_PATH,
                            DEFAULT_MAX_ADDITIONAL_NODES_PER_PATH,
                            0}))
{
}

Routing::~Routing() = default;
Routing::Routing(const Routing &other) = default;
Routing &Routing::operator=(const Routing &other) = default;
Routing::Routing(Routing &&other) noexcept = default;
Routing &Routing::operator=(Routing &&other) noexcept = default;

void Routing::setComponentTypesThatAreSwitchable(const QList<QString> &types)
{
    d->rules.switchableTypes = types;
}

QList<QString> Routing::componentTypesThatAreSwitchable() const
{
    return d->rules.switchableTypes;
}

void Routing::setComponentTypesThatAreInterfaces(const QList<QString> &types)
{
    d->rules.interfaceTypes = types;
}

QList<QString> Routing::componentTypesThatAreInterfaces() const
{
    return d->rules.interfaceTypes;
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

QList<RoutingPath> Routing::findPaths(const QMap<QString, QString> &sourceProperties, const QString &sourcePin,
                                      const QMap<QString, QString> &destinationProperties,
                                      const QString &destinationPin) const
{
    const auto source = findNode(*d->provider, sourceProperties, sourcePin);
    return d->search<RoutingPath>(source, findNode(*d->provider, destinationProperties, destinationPin));
}

QList<RoutingPath> Routing::findPathsBetween(const QSharedPointer<EDAComponent> &source, const QString &sourcePin,
                                             const QSharedPointer<EDAComponent> &destination,
                                             const QString &destinationPin) const
{
    const auto sourceNode = findNode(*d->provider, source, {}, sourcePin);
    return d->search<RoutingPath>(sourceNode, findNode(*d->provider, destination, {}, destinationPin));
}

QList<TracedPath> Routing::findTracedPaths(const QMap<QString, QString> &sourceProperties, const QString &sourcePin,
                                           const QMap<QString, QString> &destinationProperties,
                                           const QString &destinationPin) const
{
    const auto source = findNode(*d->provider, sourceProperties, sourcePin);
    return d->search<TracedPath>(source, findNode(*d->provider, destinationProperties, destinationPin));
}

QList<TracedPath> Routing::findTracedPathsBetween(const QSharedPointer<EDAComponent> &source, const QString &sourcePin,
                                                  const QSharedPointer<EDAComponent> &destination,
                                                  const QString &destinationPin) const
{
    const auto sourceNode = findNode(*d->provider, source, {}, sourcePin);
    return d->search<TracedPath>(sourceNode, findNode(*d->provider, destination, {}, destinationPin));
}
}
