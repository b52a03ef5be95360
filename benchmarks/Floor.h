#ifndef VELK_BENCHMARKS_FLOOR_H
#define VELK_BENCHMARKS_FLOOR_H

#include "benchmarks/SystemGraph.h"

namespace VelkBenchmarks {

/// A route in numbers: of components, and of nodes.
struct NumberedPath
{
    std::vector<int> components;
    std::vector<int> additionalNodes;
};

/// The least that a search of this kind costs: breadth first from the destination to learn how many switches each net
/// still needs, then depth first from the source, on plain arrays and with plain numbers as the result. It looks up no
/// component, makes no model object and does not sort.
class Floor
{
public:
    Floor(const SystemGraph &searchedGraph, int maxSwitches, int maxAdditionalNodes);

    /// Source and destination are terminals. In depth-first order.
    std::vector<NumberedPath> findPaths(int source, int destination);

private:
    void measureDistances();
    void reach(int net, int distance);
    void search(int net, int arrival);
    void cross(int entry);
    std::size_t collectAdditionalNodes(int net, int arrival);
    void addPath();

    const SystemGraph &graph;
    const int maxNets;
    const std::size_t maxAdditional;
    int sourceTerminal = 0;
    int destinationTerminal = 0;

    std::vector<int> distances; ///< by net, tooFar unless reached
    std::vector<char> onBranch; ///< by net
    std::vector<int> reached;
    std::vector<int> components; ///< of the branch
    std::vector<int> additionalNodes;
    std::vector<NumberedPath> paths;
};
}

#endif
