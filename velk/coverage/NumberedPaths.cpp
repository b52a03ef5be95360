#include <velk/coverage/NumberedPaths.h>

#include <velk/coverage/PairsOver.h>
#include <velk/coverage/PathTree.h>

#include <algorithm>

namespace Velk {

namespace {

bool hasAll(const std::vector<int> &path, const std::vector<int> &required)
{
    return std::all_of(required.cbegin(), required.cend(),
                       [&](int component) { return std::find(path.cbegin(), path.cend(), component) != path.cend(); });
}
}

NumberedPaths::NumberedPaths(const NetlistIndex &netlist, const RoutingRules &routingRules,
                             const std::vector<NumberedNode> &sourcePins, const std::vector<NumberedNode> &dutPins,
                             const std::function<bool()> &isCalledOff)
    : index(netlist)
    , graph(netlist.crossingGraph(routingRules.roles, routingRules.relayContacts))
    , rules(routingRules)
    , sources(sourcePins)
    , duts(dutPins)
    , interruption(isCalledOff)
{
    rules.maxPaths = 1;
}

std::vector<PathFinder::Path> NumberedPaths::shortestPaths(qsizetype source, const std::vector<qsizetype> &wanted,
                                                           int without)
{
    const SearchRules rulesOfSearch = rulesFrom(source, without);
    std::vector<int> terminals;
    terminals.reserve(wanted.size());
    for (const qsizetype dut : wanted)
        terminals.push_back(terminalOf(dut));
    std::vector<Path> result(wanted.size());
    std::vector<std::size_t> unsettled; // searched when the tree has given back the memory that searches use too
    {
        PathTree tree(index, *graph, rulesOfSearch, terminals, interruption);
        for (std::size_t i = 0; i < wanted.size(); ++i) {
            const int path = tree.pathTo(terminals[i]);
            if (path == PathTree::none)
                continue;
            auto components = tree.componentsOf(path);
            if (tree.isPossible(path) && hasAll(components, rulesOfSearch.required))
                result[i] = std::move(components);
            else
                unsettled.push_back(i);
        }
    }
    for (const std::size_t i : unsettled)
        result[i] = find(rulesOfSearch, wanted[i]);
    return result;
}

PathFinder::Path NumberedPaths::firstPath(qsizetype source, qsizetype dut, int switches)
{
    SearchRules rulesOfSearch = rulesFrom(source, none);
    rulesOfSearch.maxNetsSearched = switches;
    return find(rulesOfSearch, dut);
}

bool NumberedPaths::isOnAnyPath(int component)
{
    const bool isSwitchable = rules.roles.of(index.componentTypes().at(index.typeOf(component))).isSwitchable;
    if (sources.empty() || !isSwitchable)
        return false;
    const PairsOver pairs(component, index, *graph, rulesFrom(0, component), sources, duts, interruption);
    return pairs.anyOf([&](qsizetype source, qsizetype dut) { return hasPathOver(component, source, dut); });
}

SearchRules NumberedPaths::rulesFrom(qsizetype source, int without) const
{
    const NumberedNode &node = sources[static_cast<std::size_t>(source)];
    SearchRules result(rules, index, node, node);
    if (without != none)
        result.exclusions = exclusionsWith(without);
    return result;
}

std::shared_ptr<const Exclusions> NumberedPaths::exclusionsWith(int component) const
{
    Exclusions result = rules.exclusions ? *rules.exclusions->in(index) : Exclusions(index);
    result.setComponent(component, true);
    return std::make_shared<const Exclusions>(std::move(result));
}

PathFinder::Path NumberedPaths::find(SearchRules searchRules, qsizetype dut)
{
    searchRules.ends.destination = terminalOf(dut);
    PrunedPathSearch search(index, *graph, searchRules, interruption, Kept::Components);
    Path result;
    search.run().visitAll(
        [&](const FoundPath &path) { result.emplace(path.components, path.components + path.length); });
    return result;
}

bool NumberedPaths::hasPathOver(int component, qsizetype source, qsizetype dut)
{
    SearchRules rulesOfSearch = rulesFrom(source, none);
    rulesOfSearch.require(component);
    return find(rulesOfSearch, dut).has_value();
}
}
