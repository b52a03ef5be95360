#include "benchmarks/Igraph.h"

#include <igraph.h>

#include <chrono>
#include <stdexcept>

namespace VelkBenchmarks {

namespace {

std::chrono::steady_clock::time_point deadline;

igraph_error_t stopAtDeadline(void *)
{
    if (std::chrono::steady_clock::now() < deadline)
        return IGRAPH_SUCCESS;
    IGRAPH_FINALLY_FREE();
    return IGRAPH_INTERRUPTED;
}
}

struct Igraph::Data
{
    igraph_t graph{};
    igraph_vector_int_t result{};
};

// Vertices are the nets first, then the components, switchable or not.
Igraph::Igraph(const SystemGraph &searchedGraph, int sourceTerminal, int destinationTerminal, int maxAdditionalNodes)
    : graph(searchedGraph)
    , source(sourceTerminal)
    , destination(destinationTerminal)
    , data(std::make_unique<Data>())
{
    igraph_vector_int_t edges;
    igraph_vector_int_init(&edges, 0);
    for (int net = 0; net < graph.netCount(); ++net) {
        if (isTooBusy(net, maxAdditionalNodes))
            continue;
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

bool Igraph::isTooBusy(int net, int maxAdditionalNodes) const
{
    int additionalNodes = 0;
    for (int node = graph.firstNodes[toSize(net)]; node < graph.firstNodes[toSize(net) + 1]; ++node) {
        const int terminal = graph.terminalsOfNodes[toSize(node)];
        if (terminal == source || terminal == destination)
            return false;
        additionalNodes += graph.interfaces[toSize(graph.componentsOfTerminals[toSize(terminal)])];
    }
    return additionalNodes > maxAdditionalNodes;
}

std::size_t Igraph::findPaths(int maxSwitches)
{
    // Gives the memory of the last result back, so that each call has to get its own.
    igraph_vector_int_destroy(&data->result);
    igraph_vector_int_init(&data->result, 0);
    deadline = std::chrono::steady_clock::now() + std::chrono::minutes(2);
    igraph_set_interruption_handler(stopAtDeadline);
    const auto status = igraph_get_all_simple_paths(&data->graph, &data->result, graph.netsOfTerminals[toSize(source)],
                                                    igraph_vss_1(graph.netsOfTerminals[toSize(destination)]),
                                                    2 * maxSwitches, IGRAPH_ALL);
    if (status != IGRAPH_SUCCESS)
        throw std::runtime_error("igraph takes more than two minutes");
    return static_cast<std::size_t>(igraph_vector_int_size(&data->result));
}

std::vector<std::vector<int>> Igraph::paths() const
{
    std::vector<std::vector<int>> result;
    std::vector<int> vertices;
    for (igraph_integer_t i = 0; i < igraph_vector_int_size(&data->result); ++i) {
        const auto vertex = static_cast<int>(VECTOR(data->result)[i]);
        if (vertex >= 0) {
            vertices.push_back(vertex);
            continue;
        }
        auto &components = result.emplace_back();
        for (std::size_t place = 1; place < vertices.size(); place += 2)
            components.push_back(vertices[place] - graph.netCount());
        vertices.clear();
    }
    return result;
}
}
