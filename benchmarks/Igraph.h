#ifndef VELK_BENCHMARKS_IGRAPH_H
#define VELK_BENCHMARKS_IGRAPH_H

#include "benchmarks/SystemGraph.h"

#include <memory>

namespace VelkBenchmarks {

/// igraph's enumeration of all simple paths, on a graph whose vertices are the nets and the switchable components and
/// whose edges are the nodes. So parallel relays make separate paths, and one of three pins leads from each to the two
/// others. No component may have more than three pins, or two on one net: then a path could cross one twice, which a
/// simple path cannot. Nets that no route may pass, since they alone have too many additional nodes, are left out.
class Igraph
{
public:
    /// For paths between these terminals.
    Igraph(const SystemGraph &searchedGraph, int sourceTerminal, int destinationTerminal, int maxAdditionalNodes);
    ~Igraph();
    Igraph(const Igraph &) = delete;
    Igraph &operator=(const Igraph &) = delete;

    /// What igraph returns: the vertices of all paths one after the other in numbers of its own. Gives their count;
    /// they stay here until the next call. Throws std::runtime_error after two minutes.
    std::size_t findPaths(int maxSwitches);

    /// The components of each path of the last result in our numbers.
    std::vector<std::vector<int>> paths() const;

private:
    bool isTooBusy(int net, int maxAdditionalNodes) const;

    struct Data;
    const SystemGraph &graph;
    const int source;
    const int destination;
    std::unique_ptr<Data> data;
};
}

#endif
