#include <velk/routing/RoutingPrivate.h>

#include <velk/model/IndexedProvider.h>
#include <velk/model/RoutingLog.h>
#include <velk/routing/PathRecords.h>
#include <velk/routing/PathSearch.h>
#include <velk/search/PrunedPathSearch.h>

#include <algorithm>
#include <type_traits>
#include <utility>

namespace Velk {

namespace {

qsizetype switchCount(const RoutingPath &path)
{
    return path.switchingComponents.size();
}

qsizetype switchCount(const TracedPath &path)
{
    return path.steps.size();
}
}

const NetlistIndex *RoutingPrivate::providerIndex() const
{
    const auto *indexed = dynamic_cast<const IndexedProvider *>(provider);
    return indexed ? indexed->netlistIndex() : nullptr;
}

const NetlistIndex *RoutingPrivate::searchedIndex() const
{
    return isRoutingLogged() ? nullptr : providerIndex();
}

void RoutingPrivate::exclude(const QList<QString> &componentRefs, const QList<QString> &netNames)
{
    rules.exclusions.reset();
    if (!componentRefs.isEmpty() || !netNames.isEmpty())
        rules.exclusions = QSharedPointer<const NamedExclusions>::create(componentRefs, netNames);
}

QList<QString> RoutingPrivate::unknownExclusions() const
{
    QList<QString> result;
    if (!rules.exclusions)
        return result;
    for (const QString &componentRef : rules.exclusions->componentRefs()) {
        if (provider->getComponentByRef(componentRef).isNull())
            result.append(componentRef);
    }
    QSet<QString> knownNets;
    const auto addNames = [&knownNets](const QList<QSharedPointer<EDANet>> &nets) {
        for (const auto &net : nets) {
            if (net)
                knownNets.insert(net->name);
        }
    };
    addNames(provider->getNets());
    if (const auto *index = providerIndex())
        addNames(index->boardNets());
    for (const QString &name : rules.exclusions->netNames()) {
        if (!knownNets.contains(name))
            result.append(name);
    }
    return result;
}

template <typename Path>
QList<Path> RoutingPrivate::search(const NetlistIndex &index, const RoutingRules &rulesOfSearch,
                                   const SearchRules &numbered) const
{
    Interruption interruption(isCalledOff);
    const auto graph = index.crossingGraph(rulesOfSearch.roles, rulesOfSearch.relayContacts);
    PrunedPathSearch search(index, *graph, numbered, interruption,
                            std::is_same_v<Path, TracedPath> ? Kept::Crossings : Kept::Components);
    return pathsOf<Path>(search.run(), index, interruption);
}

template <typename Path>
QList<Path> RoutingPrivate::searchExhaustively(const RoutingRules &rulesOfSearch, const NodeWithComponent &source,
                                               const NodeWithComponent &destination) const
{
    Interruption interruption(isCalledOff);
    QList<Path> paths;
    PathSearch search(*provider, rulesOfSearch, interruption, source, destination.node);
    search.run([&] { paths.append(search.path<Path>()); });
    // Stable, so that the same netlist always gives the same order.
    std::stable_sort(paths.begin(), paths.end(), [](const Path &a, const Path &b) {
        return std::pair(switchCount(a), a.additionalNodes.size()) <
               std::pair(switchCount(b), b.additionalNodes.size());
    });
    return paths;
}

qsizetype RoutingPrivate::count(const NetlistIndex &index, const RoutingRules &rulesOfSearch,
                                const SearchRules &numbered) const
{
    Interruption interruption(isCalledOff);
    const auto graph = index.crossingGraph(rulesOfSearch.roles, rulesOfSearch.relayContacts);
    return PrunedPathSearch(index, *graph, numbered, interruption, Kept::Nothing).run().count();
}

qsizetype RoutingPrivate::countExhaustively(const RoutingRules &rulesOfSearch, const NodeWithComponent &source,
                                            const NodeWithComponent &destination) const
{
    Interruption interruption(isCalledOff);
    qsizetype result = 0;
    PathSearch(*provider, rulesOfSearch, interruption, source, destination.node).run([&] { ++result; });
    return result;
}

template QList<RoutingPath> RoutingPrivate::search(const NetlistIndex &index, const RoutingRules &rulesOfSearch,
                                                   const SearchRules &numbered) const;
template QList<TracedPath> RoutingPrivate::search(const NetlistIndex &index, const RoutingRules &rulesOfSearch,
                                                  const SearchRules &numbered) const;
template QList<RoutingPath> RoutingPrivate::searchExhaustively(const RoutingRules &rulesOfSearch,
                                                               const NodeWithComponent &source,
                                                               const NodeWithComponent &destination) const;
template QList<TracedPath> RoutingPrivate::searchExhaustively(const RoutingRules &rulesOfSearch,
                                                              const NodeWithComponent &source,
                                                              const NodeWithComponent &destination) const;
}
