#include <velk/coverage/NumberedPaths.h>

#include <velk/coverage/PathTree.h>

#include <algorithm>

namespace Velk {

namespace {

SearchRules rulesFrom(const NumberedNode &source, const NetlistIndex &index, RoutingRules rules)
{
    rules.maxPaths = 1;
    return {rules, index, source, source};
}
}

NumberedPaths::NumberedPaths(const NetlistIndex &netlist, const RoutingRules &routingRules, const NumberedNode &source,
                             const std::vector<int> &dutTerminals, const std::function<bool()> &isCalledOff)
    : index(netlist)
    , graph(netlist.crossingGraph(routingRules.roles, routingRules.relayContacts))
    , rules(rulesFrom(source, netlist, routingRules))
    , terminals(dutTerminals)
    , interruption(isCalledOff)
{
}

std::vector<PathFinder::Path> NumberedPaths::shortestPaths(const std::vector<qsizetype> &wanted, int without)
{
    const SearchRules rulesOfSearch = without == none ? rules : rulesWithout(without);
    std::vector<Path> result(wanted.size());
    std::vector<std::size_t> unsettled; // searched when the tree has given back the memory that searches use too
    {
        PathTree tree(index, *graph, rulesOfSearch, interruption);
        for (std::size_t i = 0; i < wanted.size(); ++i) {
            const int path = tree.pathTo(terminalOf(wanted[i]));
            if (path == PathTree::none)
                continue;
            if (tree.isPossible(path))
                result[i] = tree.componentsOf(path);
            else
                unsettled.push_back(i);
        }
    }
    for (const std::size_t i : unsettled)
        result[i] = find(rulesOfSearch, wanted[i]);
    return result;
}

PathFinder::Path NumberedPaths::firstPath(qsizetype dut)
{
    return find(rules, dut);
}

bool NumberedPaths::hasPathOver(int component, qsizetype dut)
{
    SearchRules allPaths = rules;
    allPaths.maxPaths = 0;
    allPaths.ends.destination = terminalOf(dut);
    PrunedPathSearch search(index, *graph, allPaths, interruption, Kept::Components);
    bool result = false;
    search.run().visitAll([&](const FoundPath &path) {
        result = result ||
                 std::find(path.components, path.components + path.length, component) != path.components + path.length;
    });
    return result;
}

PathFinder::Path NumberedPaths::find(const SearchRules &searchRules, qsizetype dut)
{
    SearchRules pairRules = searchRules;
    pairRules.ends.destination = terminalOf(dut);
    PrunedPathSearch search(index, *graph, pairRules, interruption, Kept::Components);
    Path result;
    search.run().visitAll(
        [&](const FoundPath &path) { result.emplace(path.components, path.components + path.length); });
    return result;
}

SearchRules NumberedPaths::rulesWithout(int component) const
{
    SearchRules result = rules;
    Exclusions exclusions = rules.exclusions ? *rules.exclusions : Exclusions(index);
    exclusions.setComponent(component, true);
    result.exclusions = std::make_shared<const Exclusions>(std::move(exclusions));
    return result;
}
}
