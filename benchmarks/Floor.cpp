#include "benchmarks/Floor.h"

namespace VelkBenchmarks {

namespace {

constexpr int tooFar = 1 << 20;
}

Floor::Floor(const SystemGraph &searchedGraph, int maxSwitches, int maxAdditionalNodes)
    : graph(searchedGraph)
    , maxNets(maxSwitches + 1)
    , maxAdditional(toSize(maxAdditionalNodes))
    , distances(toSize(graph.netCount()), tooFar)
    , onBranch(toSize(graph.netCount()), 0)
{
}

std::vector<NumberedPath> Floor::findPaths(int source, int destination)
{
    sourceTerminal = source;
    destinationTerminal = destination;
    measureDistances();
    const int net = graph.netsOfTerminals[toSize(source)];
    if (distances[toSize(net)] == 0)
        addPath();
    else if (distances[toSize(net)] != tooFar)
        search(net, source);
    for (const int touched : reached)
        distances[toSize(touched)] = tooFar;
    return std::move(paths);
}

void Floor::measureDistances()
{
    reached.clear();
    reach(graph.netsOfTerminals[toSize(destinationTerminal)], 0);
    for (std::size_t next = 0; next < reached.size(); ++next) {
        const int net = reached[next];
        const int distance = distances[toSize(net)] + 1;
        if (distance > maxNets)
            return;
        for (int node = graph.firstNodes[toSize(net)]; node < graph.firstNodes[toSize(net) + 1]; ++node) {
            const int component = graph.componentsOfTerminals[toSize(graph.terminalsOfNodes[toSize(node)])];
            if (!graph.switchable[toSize(component)])
                continue;
            const int end = graph.firstTerminals[toSize(component) + 1];
            for (int exit = graph.firstTerminals[toSize(component)]; exit < end; ++exit)
                reach(graph.netsOfTerminals[toSize(exit)], distance);
        }
    }
}

void Floor::reach(int net, int distance)
{
    if (net == SystemGraph::none || distances[toSize(net)] != tooFar)
        return;
    distances[toSize(net)] = distance;
    reached.push_back(net);
}

void Floor::search(int net, int arrival)
{
    onBranch[toSize(net)] = 1;
    for (int node = graph.firstNodes[toSize(net)]; node < graph.firstNodes[toSize(net) + 1]; ++node) {
        const int entry = graph.terminalsOfNodes[toSize(node)];
        if (entry != arrival && graph.switchable[toSize(graph.componentsOfTerminals[toSize(entry)])])
            cross(entry);
    }
    onBranch[toSize(net)] = 0;
}

void Floor::cross(int entry)
{
    const int component = graph.componentsOfTerminals[toSize(entry)];
    components.push_back(component);
    const int depth = static_cast<int>(components.size());
    const int end = graph.firstTerminals[toSize(component) + 1];
    for (int exit = graph.firstTerminals[toSize(component)]; exit < end; ++exit) {
        const int net = graph.netsOfTerminals[toSize(exit)];
        if (exit == entry || net == SystemGraph::none || depth + distances[toSize(net)] > maxNets ||
            onBranch[toSize(net)])
            continue;
        if (distances[toSize(net)] == 0) {
            addPath();
            continue;
        }
        const std::size_t before = collectAdditionalNodes(net, exit);
        if (additionalNodes.size() <= maxAdditional)
            search(net, exit);
        additionalNodes.resize(before);
    }
    components.pop_back();
}

/// How many there were before.
std::size_t Floor::collectAdditionalNodes(int net, int arrival)
{
    const std::size_t before = additionalNodes.size();
    for (int node = graph.firstNodes[toSize(net)]; node < graph.firstNodes[toSize(net) + 1]; ++node) {
        const int terminal = graph.terminalsOfNodes[toSize(node)];
        if (graph.interfaces[toSize(graph.componentsOfTerminals[toSize(terminal)])] && terminal != arrival &&
            terminal != sourceTerminal)
            additionalNodes.push_back(node);
    }
    return before;
}

void Floor::addPath()
{
    paths.push_back({components, additionalNodes});
}
}
