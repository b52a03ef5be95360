#include <velk/coverage/PathTree.h>

#include <algorithm>

namespace Velk {

PathTree::PathTree(const NetlistIndex &netlist, const CrossingGraph &crossingGraph, const SearchRules &searchRules,
                   const std::vector<int> &wantedTerminals, Interruption &interruption)
    : index(netlist)
    , graph(crossingGraph)
    , rules(searchRules)
    , firstArrivals(borrowed.memory().switches)
    , latestArrivals(borrowed.memory().latestLabels)
    , crossed(borrowed.memory().crossed)
    , wantedNets(borrowed.memory().nearNetNumbers)
{
    if (graph.contacts())
        held.emplace(*graph.contacts(), borrowed.memory());
    want(wantedTerminals);
    grow(interruption);
}

int PathTree::pathTo(int terminal) const
{
    int result = none;
    const auto nets = index.netsOfTerminal(terminal);
    for (const int net : nets) {
        if (!firstArrivals.has(net))
            continue;
        const int path = firstArrivals.value(net);
        if (result == none || at(path).switches < at(result).switches)
            result = path;
    }
    return result;
}

bool PathTree::isPossible(int path)
{
    bool result = true;
    int taken = 0;
    for (int number = path; result && at(number).before != none; number = at(number).before) {
        const Arrival &arrival = at(number);
        const int entry = index.numberedNode(arrival.crossing.node).terminal;
        result = !crossesBack(arrival);
        if (!result || !held)
            continue;
        result = held->take(graph.contacts()->contactBetween(entry, arrival.crossing.exit));
        taken += result ? 1 : 0;
    }
    for (; taken > 0; --taken)
        held->release();
    return result;
}

std::vector<int> PathTree::componentsOf(int path) const
{
    std::vector<int> result;
    for (int number = path; at(number).before != none; number = at(number).before)
        result.push_back(at(number).component);
    return result;
}

void PathTree::want(const std::vector<int> &terminals)
{
    wantedNets.clear(index.netCount());
    for (const int terminal : terminals) {
        for (const int net : index.netsOfTerminal(terminal))
            wantedNets.set(net, 0);
    }
    missingNets = wantedNets.all().size();
}

// A net is looked at again when it is reached with less to collect, but no path to it gets shorter, so nothing is left
// to do when all nets that are wanted have been reached.
void PathTree::grow(Interruption &interruption)
{
    firstArrivals.clear(index.netCount());
    latestArrivals.clear(index.netCount());
    crossed.clear(graph.junctionCount());
    const int net = index.netOfTerminal(rules.ends.source);
    if (net == NetlistIndex::none || rules.isExcludedNet(net))
        return;
    add({net, 0, 0, none, rules.sourceComponent, {net, none, rules.ends.source}});
    for (int next = 0; missingNets > 0 && next < static_cast<int>(arrivals.size()); ++next) {
        if (at(next).switches >= rules.maxNetsSearched)
            return;
        if (at(next).additionalNodes <= rules.maxAdditionalNodes)
            crossFrom(next, interruption);
    }
}

void PathTree::crossFrom(int arrival, Interruption &interruption)
{
    const Arrival from = at(arrival); // a copy, since the list grows
    const auto rows = graph.rowsOf(from.net);
    interruption.work(rows.size());
    for (const CrossingRow &row : rows) {
        if (rules.isExcludedComponent(row.component))
            continue;
        if (graph.leadsToJunction(row))
            crossJunction(arrival, row, interruption);
        else
            reach(row.net, arrival, row.component, {from.net, row.node, row.exit});
    }
}

// As for SearchBounds, the first of its nets is the best one to come by.
void PathTree::crossJunction(int arrival, const CrossingRow &entry, Interruption &interruption)
{
    const Arrival &from = at(arrival);
    const int junction = entry.exit;
    if (crossed.has(junction) && crossed.value(junction) <= from.additionalNodes)
        return;
    crossed.set(junction, from.additionalNodes);
    const auto exits = graph.rowsOfJunction(junction);
    interruption.work(exits.size());
    const int net = from.net;
    for (const CrossingRow &exit : exits)
        reach(exit.net, arrival, exit.component, {net, entry.node, exit.exit});
}

void PathTree::reach(int net, int before, int component, const Crossing &crossing)
{
    if (rules.isExcludedNet(net))
        return;
    const int switches = at(before).switches + 1;
    const int collected = at(before).additionalNodes;
    const bool isNew = !firstArrivals.has(net);
    const int latest = isNew ? none : latestArrivals.value(net);
    if (!isNew && at(latest).additionalNodes <= collected)
        return;
    const int nodes = collected + additionalNodesOn(net, crossing.exit, rules.maxAdditionalNodes - collected);
    if (!isNew && at(latest).additionalNodes <= nodes)
        return;
    const Arrival arrival{net, switches, nodes, before, component, crossing};
    if (!isNew && at(latest).switches == switches) { // and so not looked at yet
        arrivals[static_cast<std::size_t>(latest)] = arrival;
        return;
    }
    add(arrival);
}

void PathTree::add(const Arrival &arrival)
{
    const int number = static_cast<int>(arrivals.size());
    arrivals.push_back(arrival);
    latestArrivals.set(arrival.net, number);
    if (firstArrivals.has(arrival.net))
        return;
    firstArrivals.set(arrival.net, number);
    if (wantedNets.has(arrival.net))
        --missingNets;
}

// One too many is enough, since thousands may lie on a net.
int PathTree::additionalNodesOn(int net, int arrivalTerminal, int mostNodes) const
{
    int result = 0;
    for (const InterfaceNode &node : graph.interfaceNodesOf(net)) {
        if (node.terminal != arrivalTerminal && node.terminal != rules.ends.source && ++result > mostNodes)
            break;
    }
    return result;
}

// Whether the step leaves its component by the pin by which the path has come to it or by which it enters.
bool PathTree::crossesBack(const Arrival &arrival) const
{
    const int entry = index.numberedNode(arrival.crossing.node).terminal;
    const Arrival &before = at(arrival.before);
    return entry == arrival.crossing.exit || (before.component == arrival.component && before.crossing.exit == entry);
}
}
