#include <velkplanning/DisjointWays.h>

#include <velkplanning/Places.h>

#include <algorithm>
#include <functional>
#include <queue>
#include <utility>

namespace Velk {

DisjointWays::DisjointWays(int nodeCount)
    : edgesOf(placeOf(nodeCount))
    , potentials(placeOf(nodeCount))
{
}

int DisjointWays::addNode()
{
    edgesOf.emplace_back();
    potentials.push_back(0);
    return static_cast<int>(edgesOf.size()) - 1;
}

void DisjointWays::addEdge(int from, int to, int room, Weight cost)
{
    edgesOf[placeOf(from)].push_back(static_cast<int>(edges.size()));
    edges.push_back({to, room, cost});
    edgesOf[placeOf(to)].push_back(static_cast<int>(edges.size()));
    edges.push_back({from, 0, -cost});
}

bool DisjointWays::addWay(int source, int target)
{
    findDistances(source, target);
    const Weight reached = distances[placeOf(target)];
    if (reached == endless)
        return false;
    for (std::size_t node = 0; node < potentials.size(); ++node)
        potentials[node] += std::min(distances[node], reached);
    for (int node = target; node != source;) {
        const auto edge = placeOf(reachedBy[placeOf(node)]);
        --edges[edge].room;
        ++edges[edge ^ 1].room;
        costOfAll += edges[edge].cost;
        node = edges[edge ^ 1].to;
    }
    return true;
}

// Ends as soon as the target is reached: nothing else is nearer then.
void DisjointWays::findDistances(int source, int target)
{
    distances.assign(edgesOf.size(), endless);
    reachedBy.assign(edgesOf.size(), -1);
    using Entry = std::pair<Weight, int>;
    std::priority_queue<Entry, std::vector<Entry>, std::greater<>> next;
    distances[placeOf(source)] = 0;
    next.emplace(0, source);
    while (!next.empty() && distances[placeOf(target)] > next.top().first) {
        const auto [distance, from] = next.top();
        next.pop();
        if (distance > distances[placeOf(from)])
            continue;
        for (const int i : edgesOf[placeOf(from)]) {
            const Edge &edge = edges[placeOf(i)];
            const Weight further = distance + edge.cost + potentials[placeOf(from)] - potentials[placeOf(edge.to)];
            if (edge.room == 0 || distances[placeOf(edge.to)] <= further)
                continue;
            distances[placeOf(edge.to)] = further;
            reachedBy[placeOf(edge.to)] = i;
            next.emplace(further, edge.to);
        }
    }
}
}
