#include "benchmarks/Igraph.h"

#include <igraph.h>

#include <algorithm>
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

Igraph::Igraph(const SystemGraph &searchedGraph, int sourceTerminal, int destinationTerminal, int maxSwitches,
               int maxAdditionalNodes)
    : graph(searchedGraph)
    , source(sourceTerminal)
    , destination(destinationTerminal)
    , maxEdges(maxSwitches + 1)
    , data(std::make_unique<Data>())
{
    igraph_vector_int_t edges;
    igraph_vector_int_init(&edges, 0);
    for (int component = 0; component < graph.componentCount(); ++component) {
        if (!graph.switchable[toSize(component)])
            continue;
        const int pin = graph.firstTerminals[toSize(component)];
        const int one = graph.netsOfTerminals.at(toSize(pin));
        const int other = graph.netsOfTerminals.at(toSize(pin + 1));
        if (!isOpen(one, maxAdditionalNodes) || !isOpen(other, maxAdditionalNodes))
            continue;
        const bool isSecond = !components.insert({{one, other}, component}).second;
        if (isSecond || pin + 2 != graph.firstTerminals[toSize(component) + 1])
            throw std::logic_error("igraph would list other paths");
        components.insert({{other, one}, component});
        igraph_vector_int_push_back(&edges, one);
        igraph_vector_int_push_back(&edges, other);
    }
    igraph_create(&data->graph, &edges, graph.netCount(), IGRAPH_UNDIRECTED);
    igraph_vector_int_destroy(&edges);
    igraph_vector_int_init(&data->result, 0);
}

Igraph::~Igraph()
{
    igraph_vector_int_destroy(&data->result);
    igraph_destroy(&data->graph);
}

bool Igraph::isOpen(int net, int maxAdditionalNodes) const
{
    if (net == SystemGraph::none)
        return false;
    int additionalNodes = 0;
    for (int node = graph.firstNodes[toSize(net)]; node < graph.firstNodes[toSize(net) + 1]; ++node) {
        const int terminal = graph.terminalsOfNodes[toSize(node)];
        if (terminal == source || terminal == destination)
            return true;
        additionalNodes += graph.interfaces[toSize(graph.componentsOfTerminals[toSize(terminal)])];
    }
    return additionalNodes <= maxAdditionalNodes;
}

std::size_t Igraph::findPaths()
{
    // Gives the memory of the last result back, so that each call has to get its own.
    igraph_vector_int_destroy(&data->result);
    igraph_vector_int_init(&data->result, 0);
    deadline = std::chrono::steady_clock::now() + std::chrono::minutes(2);
    igraph_set_interruption_handler(stopAtDeadline);
    const auto status =
        igraph_get_all_simple_paths(&data->graph, &data->result, graph.netsOfTerminals[toSize(source)],
                                    igraph_vss_1(graph.netsOfTerminals[toSize(destination)]), maxEdges, IGRAPH_ALL);
    if (status != IGRAPH_SUCCESS)
        throw std::runtime_error("igraph takes more than two minutes");
    return static_cast<std::size_t>(igraph_vector_int_size(&data->result));
}

std::vector<std::vector<int>> Igraph::sortedPaths() const
{
    std::vector<std::vector<int>> paths(1);
    int last = SystemGraph::none;
    for (igraph_integer_t i = 0; i < igraph_vector_int_size(&data->result); ++i) {
        const auto net = static_cast<int>(VECTOR(data->result)[i]);
        if (net < 0)
            paths.emplace_back();
        else if (last >= 0)
            paths.back().push_back(components.at({last, net}));
        last = net;
    }
    paths.pop_back(); // behind the last mark
    std::sort(paths.begin(), paths.end());
    return paths;
}
}
