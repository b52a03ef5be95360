#ifndef VELK_BENCHMARKS_IGRAPH_H
#define VELK_BENCHMARKS_IGRAPH_H

#include "benchmarks/SystemGraph.h"

#include <map>
#include <memory>
#include <utility>
#include <vector>

namespace VelkBenchmarks {

/// igraph's enumeration of all simple paths, on a graph whose vertices are the nets and whose edges are the switchable
/// components, which must have two pins and not be parallel. Nets that no route may pass, since they alone have too
/// many additional nodes, are left out.
class Igraph
{
public:
    /// For paths between these terminals, as long as a search with these limits may find.
    Igraph(const SystemGraph &searchedGraph, int sourceTerminal, int destinationTerminal, int maxSwitches,
           int maxAdditionalNodes);
    ~Igraph();
    Igraph(const Igraph &) = delete;
    Igraph &operator=(const Igraph &) = delete;

    /// What igraph returns: the nets of all paths one after the other. Gives their count; they stay here until the next
    /// call. Throws std::runtime_error after two minutes.
    std::size_t findPaths();

    /// The components of each path of the last result, sorted.
    std::vector<std::vector<int>> sortedPaths() const;

private:
    bool isOpen(int net, int maxAdditionalNodes) const;

    struct Data;
    const SystemGraph &graph;
    const int source;
    const int destination;
    const int maxEdges;
    std::map<std::pair<int, int>, int> components; ///< by the nets that they connect, both ways
    std::unique_ptr<Data> data;
};
}

#endif
