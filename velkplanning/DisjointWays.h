#ifndef VELKPLANNING_DISJOINTWAYS_H
#define VELKPLANNING_DISJOINTWAYS_H

#include <cstdint>
#include <vector>

namespace Velk {

/// Ways from a source to a target that share no more than there is room for, as many as there are or as cheap as they
/// can be.
class DisjointWays
{
public:
    using Weight = std::int64_t;

    explicit DisjointWays(int nodeCount);

    int addNode();
    void addEdge(int from, int to, int room, Weight cost = 0);
    /// Adds one way more, for which the others may have to be laid anew, all of them as cheap as so many can be. False
    /// where there is no more room.
    bool addWay(int source, int target);
    Weight cost() const { return costOfAll; }
    /// After addWay() has found no more, whether there is still room on a way from the source to the node.
    bool isReached(int node) const { return distances[static_cast<std::size_t>(node)] != endless; }

private:
    struct Edge
    {
        int to;
        int room;
        Weight cost;
    };
    static constexpr Weight endless = INT64_MAX;

    void findDistances(int source, int target);

    std::vector<std::vector<int>> edgesOf; ///< by node
    std::vector<Edge> edges;               ///< each is followed by the one back
    std::vector<Weight> potentials;        ///< with which no edge with room has a negative cost
    std::vector<Weight> distances;
    std::vector<int> reachedBy; ///< by node, an edge
    Weight costOfAll = 0;
};
}

#endif
