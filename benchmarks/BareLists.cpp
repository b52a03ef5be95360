#include "benchmarks/BareLists.h"

#include <QHash>

namespace VelkBenchmarks {

using namespace Velk;

BareLists::BareLists(const SystemGraph &searchedGraph, const QList<RoutingPath> &wantedPaths)
    : graph(searchedGraph)
{
    QHash<const void *, int> numbers;
    for (std::size_t i = 0; i < graph.components.size(); ++i)
        numbers.insert(graph.components[i].data(), static_cast<int>(i));
    for (std::size_t i = 0; i < graph.nodes.size(); ++i)
        numbers.insert(graph.nodes[i].data(), static_cast<int>(i));

    for (const auto &path : wantedPaths) {
        componentCounts.push_back(static_cast<std::size_t>(path.switchingComponents.size()));
        for (const auto &component : path.switchingComponents)
            components.push_back(numbers.value(component.data()));
        std::vector<int> nodes;
        for (const auto &node : path.additionalNodes)
            nodes.push_back(numbers.value(node.data()));
        if (nodesOfLists.empty() || nodesOfLists.back() != nodes)
            nodesOfLists.push_back(std::move(nodes));
        nodeLists.push_back(nodesOfLists.size() - 1);
    }
}

QList<RoutingPath> BareLists::make() const
{
    QList<RoutingPath> paths;
    paths.reserve(static_cast<qsizetype>(componentCounts.size()));
    auto component = components.cbegin();
    for (std::size_t i = 0; i < componentCounts.size(); ++i) {
        const bool isShared = i > 0 && nodeLists[i] == nodeLists[i - 1];
        RoutingPath path{{}, isShared ? paths.last().additionalNodes : QList<QSharedPointer<EDANetNode>>()};
        path.switchingComponents.reserve(static_cast<qsizetype>(componentCounts[i]));
        for (const auto end = component + static_cast<std::ptrdiff_t>(componentCounts[i]); component != end;
             ++component)
            path.switchingComponents.append(graph.components[toSize(*component)]);
        if (!isShared) {
            const auto &nodes = nodesOfLists[nodeLists[i]];
            path.additionalNodes.reserve(static_cast<qsizetype>(nodes.size()));
            for (const int node : nodes)
                path.additionalNodes.append(graph.nodes[toSize(node)]);
        }
        paths.append(std::move(path));
    }
    return paths;
}
}
