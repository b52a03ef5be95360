#include <velk/search/RequiredCrossings.h>

#include <velk/search/SearchBounds.h>

#include <algorithm>

namespace Velk {

namespace {

/// Each takes as long as the bounds of a search, and a few show where most branches have to go.
constexpr std::size_t mostMeasured = 8;

Marks measuredOver(int component, const NetlistIndex &index, const CrossingGraph &graph, SearchRules rules,
                   Interruption &interruption)
{
    const auto exclusions =
        rules.exclusions ? std::make_shared<Exclusions>(*rules.exclusions) : std::make_shared<Exclusions>(index);
    exclusions->setComponent(component, true);
    rules.exclusions = exclusions;
    IterativeDeepening deepening(rules.maxNetsSearched, rules.maxAdditionalNodes, rules.maxPaths);
    SearchMemory memory;
    Marks result;
    SearchBounds(index, graph, rules, deepening, interruption, memory).measureOver(component, result);
    return result;
}
}

RequiredCrossings::RequiredCrossings(const NetlistIndex &index, const CrossingGraph &graph,
                                     const SearchRules &searchRules, Interruption &interruption)
    : components(searchRules.required)
    , crossings(components.size())
    , missing(static_cast<int>(components.size()))
{
    for (std::size_t i = 0; i < std::min(components.size(), mostMeasured); ++i)
        switchesOver.push_back(measuredOver(components[i], index, graph, searchRules, interruption));
}

void RequiredCrossings::add(int component)
{
    int *const count = crossingsOf(component);
    if (count && ++*count == 1)
        --missing;
}

void RequiredCrossings::remove(int component)
{
    int *const count = crossingsOf(component);
    if (count && --*count == 0)
        ++missing;
}

int RequiredCrossings::switchesFrom(int net) const
{
    int result = missing;
    for (std::size_t i = 0; i < switchesOver.size(); ++i) {
        if (crossings[i] == 0)
            result = std::max(result, switchesOver[i].value(net));
    }
    return result;
}

int *RequiredCrossings::crossingsOf(int component)
{
    const auto found = std::lower_bound(components.begin(), components.end(), component);
    return found != components.end() && *found == component
               ? &crossings[static_cast<std::size_t>(found - components.begin())]
               : nullptr;
}
}
