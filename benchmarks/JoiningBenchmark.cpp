#include "benchmarks/Suite.h"

#include <velk/provider/MultipleEDAProvider.h>
#include <velk/routing/Routing.h>

#include <optional>
#include <thread>

namespace VelkBenchmarks {

using namespace Qt::StringLiterals;
using namespace Velk;

namespace {

/// Boards that are kept for the benchmarks on them.
const Workload &keptBoards(qsizetype nodes, Properties properties)
{
    static std::pair<qsizetype, Properties> key;
    static Workload boards;
    if (boards.boards.empty() || key != std::pair(nodes, properties)) {
        boards = {}; // before the others are made
        boards = sparseSystem(nodes, properties);
        key = {nodes, properties};
    }
    return boards;
}

/// The yardstick: the nets with all suffixes, nothing joined and nothing made to look them up.
QList<QSharedPointer<EDANet>> suffixedNets(const QList<EDAProvider *> &boards)
{
    QList<QSharedPointer<EDANet>> copies;
    for (qsizetype i = 0; i < boards.size(); ++i) {
        const QString suffix = u'#' + QString::number(i + 1);
        const auto nets = boards.at(i)->getNets();
        for (const auto &net : nets) {
            auto copy = EDANet::create(net->name + suffix);
            copy->nodes.reserve(net->nodes.size());
            for (const auto &node : std::as_const(net->nodes))
                copy->nodes.append(EDANetNode::create(node->ref + suffix, node->pin));
            copies.append(std::move(copy));
        }
    }
    return copies;
}

QList<QString> connectorTypes()
{
    return {MultipleEDAProvider::DEFAULT_CONNECTOR_COMPONENT_TYPE};
}

double secondsToJoin(const Workload &system)
{
    const auto boards = system.providers();
    const auto types = connectorTypes();
    std::optional<MultipleEDAProvider> joined;
    return secondsOf([&] { joined.emplace(boards, types); });
}

double secondsToCopy(const Workload &system)
{
    const auto boards = system.providers();
    QList<QSharedPointer<EDANet>> copies;
    return secondsOf([&] { copies = suffixedNets(boards); });
}

// In a thread of its own, which has not searched before: whatever the search keeps for a thread is part of the price.
double secondsOfFirstQuery(const Workload &system)
{
    MultipleEDAProvider joined(system.providers(), connectorTypes());
    const Query &query = system.queries.at(system.queries.size() / 2);
    double seconds = 0;
    qsizetype count = 0;
    std::thread([&] {
        QList<RoutingPath> paths;
        seconds = secondsOf([&] {
            paths = Routing(&joined).findPaths(query.source, query.sourcePin, query.destination, query.destinationPin);
        });
        count = paths.size();
    }).join();
    if (count != system.routeCount)
        throw std::logic_error("the first query finds another number of routes");
    return seconds;
}

void registerJoiningOf(qsizetype nodes, Properties properties, const std::string &suffix)
{
    const auto name = [&](const char *subject) { return "joining/" + std::string(subject) + suffix; };
    const auto boards = [=]() -> const Workload & { return keptBoards(nodes, properties); };
    registerTimed(name("velk"), [=](benchmark::State &state) {
        state.counters["nodes"] = static_cast<double>(boards().nodeCount());
        return secondsToJoin(boards());
    });
    registerTimed(name("copying"), [=](benchmark::State &state) {
        state.counters["nodes"] = static_cast<double>(boards().nodeCount());
        return secondsToCopy(boards());
    });
}
}

void registerJoining(const Suite &suite)
{
    for (const qsizetype nodes : suite.sizes) {
        if (nodes >= 10'000 || suite.isQuick)
            registerJoiningOf(nodes, Properties::AsExported, '/' + std::to_string(nodes));
    }
    registerJoiningOf(suite.mainSize, Properties::Few, "/few-properties");
    registerTimed("first-query/findPaths", [nodes = suite.mainSize](benchmark::State &) {
        return secondsOfFirstQuery(keptBoards(nodes, Properties::AsExported));
    })->Iterations(suite.isQuick ? 3 : 10); // joining, outside of the time measured, takes far longer
}
}
