#include <velk/coverage/CoverageMatrix.h>

#include <velk/coverage/NumberedPaths.h>
#include <velk/coverage/PlainPaths.h>
#include <velk/routing/RoutingPrivate.h>

#include <QSet>

#include <algorithm>
#include <map>
#include <numeric>
#include <set>

namespace Velk {

class CoverageMatrixPrivate
{
public:
    CoverageMatrixPrivate(const Routing &configuredRouting, const QList<NodeWithComponent> &sourcePins,
                          const QList<NodeWithComponent> &dutPins)
        : routing(configuredRouting)
        , isCalledOff(routing.interruption())
        , sources(sourcePins)
        , duts(dutPins)
        , numbers(*routing.d->provider, routing.d->providerIndex())
    {
        const auto *index = routing.d->providerIndex();
        if (!index)
            return;
        numberedSources = numbered(sources, *index);
        numberedDuts = numbered(duts, *index);
    }

    std::unique_ptr<PathFinder> finder() const
    {
        const auto *index = routing.d->searchedIndex();
        if (index && areKnown(numberedSources) && areKnown(numberedDuts))
            return std::make_unique<NumberedPaths>(*index, routing.d->tracedRules(), numberedSources, numberedDuts,
                                                   isCalledOff);
        return std::make_unique<PlainPaths>(routing, numbers, sources, duts);
    }

    const Routing routing;
    const std::function<bool()> isCalledOff;
    const QList<NodeWithComponent> sources;
    const QList<NodeWithComponent> duts;
    const ComponentNumbers numbers;

private:
    using NumberedPins = std::vector<NumberedNode>;

    static NumberedPins numbered(const QList<NodeWithComponent> &pins, const NetlistIndex &index)
    {
        NumberedPins result;
        for (const auto &pin : pins)
            result.push_back(index.pinOf(pin.component, pin.node->pin));
        return result;
    }

    static bool areKnown(const NumberedPins &pins)
    {
        return std::all_of(pins.cbegin(), pins.cend(),
                           [](const NumberedNode &pin) { return pin.terminal != NetlistIndex::none; });
    }

    NumberedPins numberedSources; ///< where the provider has an index
    NumberedPins numberedDuts;
};

namespace {

/// The components without which a source pin may lose DUT pins.
class LossCandidates
{
public:
    /// None but those on a path of each.
    LossCandidates(const std::vector<qsizetype> &duts, const std::vector<PathFinder::Path> &paths)
    {
        for (std::size_t i = 0; i < duts.size(); ++i) {
            if (!paths[i])
                continue;
            candidates[duts[i]] = *paths[i];
            for (const int component : *paths[i])
                lostDuts[component].insert(duts[i]);
        }
    }

    /// What remains when paths without each of them are looked for: the DUT pins that are lost, by components.
    const std::map<int, std::set<qsizetype>> &confirm(PathFinder &finder, qsizetype source)
    {
        for (const int component : mostLostFirst()) {
            const auto &lost = lostDuts[component];
            if (lost.empty())
                continue;
            const std::vector<qsizetype> duts(lost.cbegin(), lost.cend());
            const auto paths = finder.shortestPaths(source, duts, component);
            for (std::size_t i = 0; i < duts.size(); ++i) {
                if (paths[i])
                    keepThoseOn(*paths[i], duts[i]);
            }
        }
        return lostDuts;
    }

private:
    /// A way round one of the first clears most of the others.
    std::vector<int> mostLostFirst() const
    {
        std::vector<int> components;
        for (const auto &candidate : lostDuts)
            components.push_back(candidate.first);
        std::stable_sort(components.begin(), components.end(), [this](int component, int other) {
            return lostDuts.at(component).size() > lostDuts.at(other).size();
        });
        return components;
    }

    void keepThoseOn(const std::vector<int> &path, qsizetype dut)
    {
        for (const int component : candidates[dut]) {
            if (std::find(path.cbegin(), path.cend(), component) == path.cend())
                lostDuts[component].erase(dut);
        }
    }

    std::map<qsizetype, std::vector<int>> candidates; ///< by DUT pins
    std::map<int, std::set<qsizetype>> lostDuts;
};

std::vector<qsizetype> reachedIn(const QList<int> &row)
{
    std::vector<qsizetype> result;
    for (qsizetype dut = 0; dut < row.size(); ++dut) {
        if (row.at(dut) != CoverageMatrix::unreached)
            result.push_back(dut);
    }
    return result;
}

QSet<QPair<QString, QString>> pinsOnAnyNet(const EDAProvider &netlist)
{
    QSet<QPair<QString, QString>> result;
    const auto nets = netlist.getNets();
    for (const auto &net : nets) {
        if (net.isNull())
            continue;
        for (const auto &node : std::as_const(net->nodes)) {
            if (node)
                result.insert({node->ref, node->pin});
        }
    }
    return result;
}
}

QList<NodeWithComponent> CoverageMatrix::pinsOnNets(const EDAProvider &netlist, const QString &type,
                                                    const QMap<QString, QString> &properties)
{
    const bool isAnyType = type.isEmpty() || properties.contains(EDAComponent::TYPE);
    QList<NodeWithComponent> result;
    auto onNets = pinsOnAnyNet(netlist);
    const auto components = netlist.getComponents();
    for (const auto &component : components) {
        const bool isWanted = component && (isAnyType || component->type().compare(type, Qt::CaseInsensitive) == 0) &&
                              component->matchesProperties(properties);
        const auto part = isWanted ? netlist.getPartByName(component->part) : nullptr;
        if (part.isNull())
            continue;
        for (const auto &pin : std::as_const(part->pins)) {
            if (pin && onNets.remove({component->ref, pin->number})) // once, where the part lists it twice
                result.append({EDANetNode::create(component->ref, pin->number), component});
        }
    }
    return result;
}

CoverageMatrix::CoverageMatrix(const Routing &routing, const QList<NodeWithComponent> &sources,
                               const QList<NodeWithComponent> &duts)
    : d(std::make_shared<const CoverageMatrixPrivate>(routing, sources, duts))
{
}

CoverageMatrix::~CoverageMatrix() = default;
CoverageMatrix::CoverageMatrix(const CoverageMatrix &other) = default;
CoverageMatrix &CoverageMatrix::operator=(const CoverageMatrix &other) = default;
CoverageMatrix::CoverageMatrix(CoverageMatrix &&other) noexcept = default;
CoverageMatrix &CoverageMatrix::operator=(CoverageMatrix &&other) noexcept = default;

QList<NodeWithComponent> CoverageMatrix::sources() const
{
    return d->sources;
}

QList<NodeWithComponent> CoverageMatrix::duts() const
{
    return d->duts;
}

QList<int> CoverageMatrix::row(qsizetype source) const
{
    std::vector<qsizetype> all(static_cast<std::size_t>(d->duts.size()));
    std::iota(all.begin(), all.end(), 0);
    const auto paths = d->finder()->shortestPaths(source, all, PathFinder::none);
    QList<int> result;
    result.reserve(d->duts.size());
    for (const auto &path : paths)
        result.append(path ? static_cast<int>(path->size()) : unreached);
    return result;
}

QList<CriticalComponent> CoverageMatrix::criticalOf(qsizetype source, const QList<int> &row) const
{
    const auto finder = d->finder();
    const auto reached = reachedIn(row);
    LossCandidates candidates(reached, finder->shortestPaths(source, reached, PathFinder::none));
    const auto &lostDuts = candidates.confirm(*finder, source);
    std::vector<int> components;
    for (const auto &[component, lost] : lostDuts) {
        if (!lost.empty())
            components.push_back(component);
    }
    d->numbers.sort(components);
    QList<CriticalComponent> result;
    for (const int component : components) {
        const auto &lost = lostDuts.at(component);
        result.append({d->numbers.component(component), {lost.cbegin(), lost.cend()}});
    }
    return result;
}

QList<CriticalPairs> CoverageMatrix::criticalPairs(const QList<QList<CriticalComponent>> &ofSources) const
{
    std::map<int, CriticalPairs> pairs;
    std::vector<int> components;
    for (qsizetype source = 0; source < ofSources.size(); ++source) {
        for (const auto &[component, duts] : ofSources.at(source)) {
            const int number = d->numbers.numberOf(*component);
            const auto &[entry, isNew] = pairs.try_emplace(number, CriticalPairs{component, {}});
            if (isNew)
                components.push_back(number);
            for (const qsizetype dut : duts)
                entry->second.lost.append({source, dut});
        }
    }
    d->numbers.sort(components);
    QList<CriticalPairs> result;
    for (const int component : components)
        result.append(pairs.at(component));
    std::stable_sort(result.begin(), result.end(),
                     [](const auto &a, const auto &b) { return a.lost.size() > b.lost.size(); });
    return result;
}

QList<QSharedPointer<EDAComponent>> CoverageMatrix::onFirstPathsOf(qsizetype source, const QList<int> &row) const
{
    const auto finder = d->finder();
    std::set<int> onPaths;
    for (const qsizetype dut : reachedIn(row)) {
        if (const auto path = finder->firstPath(source, dut, row.at(dut)))
            onPaths.insert(path->cbegin(), path->cend());
    }
    std::vector<int> components(onPaths.cbegin(), onPaths.cend());
    d->numbers.sort(components);
    QList<QSharedPointer<EDAComponent>> result;
    for (const int component : components)
        result.append(d->numbers.component(component));
    return result;
}

bool CoverageMatrix::isOnAnyPath(const QSharedPointer<EDAComponent> &component) const
{
    const int number = component ? d->numbers.numberOf(*component) : NetlistIndex::none;
    return number != NetlistIndex::none && d->finder()->isOnAnyPath(number);
}
}
