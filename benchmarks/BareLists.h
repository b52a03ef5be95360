#ifndef VELK_BENCHMARKS_BARELISTS_H
#define VELK_BENCHMARKS_BARELISTS_H

#include "benchmarks/SystemGraph.h"

#include <velk/routing/RoutingPath.h>

namespace VelkBenchmarks {

/// What the answer of findPaths() costs alone: the same lists from numbers at hand, each with one allocation. Paths
/// that have the same additional nodes as the one before share the list of them.
class BareLists
{
public:
    /// \a wantedPaths as findPaths() returned them.
    BareLists(const SystemGraph &searchedGraph, const QList<Velk::RoutingPath> &wantedPaths);

    QList<Velk::RoutingPath> make() const;

private:
    const SystemGraph &graph;
    std::vector<std::size_t> componentCounts; ///< by path
    std::vector<int> components;              ///< of all paths
    std::vector<std::size_t> nodeLists;       ///< by path
    std::vector<std::vector<int>> nodesOfLists;
};
}

#endif
