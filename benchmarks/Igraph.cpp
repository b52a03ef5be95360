#include "benchmarks/Igraph.h"

#include <igraph.h>

namespace VelkBenchmarks {

struct Igraph::Data
{
    igraph_t graph{};
    igraph_vector_int_t result{};
};

// Vertices are the nets first, then the components, switchable or not.
Igraph::Igraph(const SystemGraph &searchedGraph, int maxSwitches)
    : graph(searchedGraph)
    , maxEdges(2 * (maxSwitches + 1))
    , data(std::make_unique<Data>())
{
    igraph_vector_int_t edges;
    igraph_vector_int_init(&edges, 0);
    for (int net = 0; net < graph.netCount(); ++net) {
        for (int node = graph.firstNodes[toSize(net)]; node < graph.firstNodes[toSize(net) + 1]; ++node) {
            const int component = graph.componentsOfTerminals[toSize(graph.terminalsOfNodes[toSize(node)])];
            if (!graph.switchable[toSize(component)])
                continue;
            igraph_vector_int_push_back(&edges, net);
            igraph_vector_int_push_back(&edges, graph.netCount() + component);
        }
    }
    igraph_create(&data->graph, &edges, graph.netCount() + graph.componentCount(), IGRAPH_UNDIRECTED);
    igraph_vector_int_destroy(&edges);
    igraph_vector_int_init(&data->result, 0);
}

Igraph::~Igraph()
{
    igraph_vector_int_destroy(&data->result);
    igraph_destroy(&data->graph);
}

std::size_t Igraph::findPaths(int source, int destination)
{
    // Gives the memory of the last result back, so that each call has to get its own.
    igraph_vector_int_destroy(&data->result);
    igraph_vector_int_init(&data->result, 0);
    igraph_get_all_simple_paths(&data->graph, &data->result, graph.netsOfTerminals[toSize(source)],
                                igraph_vss_1(graph.netsOfTerminals[toSize(destination)]), maxEdges, IGRAPH_ALL);
    return static_cast<std::size_t>(igraph_vector_int_size(&data->result));
}

std::vector<NumberedPath> Igraph::paths(int source, int maxAdditionalNodes) const
{
    std::vector<NumberedPath> result;
    std::vector<int> vertices;
    for (igraph_integer_t i = 0; i < igraph_vector_int_size(&data->result); ++i) {
        const auto vertex = static_cast<int>(VECTOR(data->result)[i]);
        if (vertex >= 0) {
            vertices.push_back(vertex);
            continue;
        }
        NumberedPath path;
        for (std::size_t place = 1; place < vertices.size(); place += 2)
            path.components.push_back(vertices[place] - graph.netCount());
        path.additionalNodes = additionalNodes(vertices, source);
        if (path.additionalNodes.size() <= toSize(maxAdditionalNodes))
            result.push_back(std::move(path));
        vertices.clear();
    }
    return result;
}

// Of the nets between the first and the last.
std::vector<int> Igraph::additionalNodes(const std::vector<int> &vertices, int source) const
{
    std::vector<int> result;
    for (std::size_t place = 2; place + 1 < vertices.size(); place += 2) {
        const int net = vertices[place];
        for (int node = graph.firstNodes[toSize(net)]; node < graph.firstNodes[toSize(net) + 1]; ++node) {
            const int terminal = graph.terminalsOfNodes[toSize(node)];
            if (terminal != source && graph.interfaces[toSize(graph.componentsOfTerminals[toSize(terminal)])])
                result.push_back(node);
        }
    }
    return result;
}
}
