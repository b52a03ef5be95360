#ifndef VELK_BENCHMARKS_IGRAPH_H
#define VELK_BENCHMARKS_IGRAPH_H

#include "benchmarks/Floor.h"

#include <memory>

namespace VelkBenchmarks {

/// igraph's enumeration of all simple paths, on a graph whose vertices are the nets and the switchable components and
/// whose edges are the nodes. So parallel relays make separate paths, and one of three pins leads from each to the two
/// others. No component may have more than three pins, or two on one net: then a path could cross one twice, which a
/// simple path cannot.
class Igraph
{
public:
    Igraph(const SystemGraph &searchedGraph, int maxSwitches);
    ~Igraph();
    Igraph(const Igraph &) = delete;
    Igraph &operator=(const Igraph &) = delete;

    /// What igraph returns for two terminals: the vertices of all paths one after the other in numbers of its own.
    /// Gives their count; they stay here until the next call.
    std::size_t findPaths(int source, int destination);

    /// The last result in our numbers, without the paths that pick up too many additional nodes.
    std::vector<NumberedPath> paths(int source, int maxAdditionalNodes) const;

private:
    std::vector<int> additionalNodes(const std::vector<int> &vertices, int source) const;

    struct Data;
    const SystemGraph &graph;
    const int maxEdges;
    std::unique_ptr<Data> data;
};
}

#endif
