#include "benchmarks/BareJoin.h"
#include "benchmarks/Suite.h"

#include <velk/routing/Routing.h>

#include <stdexcept>
#include <thread>

namespace VelkBenchmarks {

using namespace Velk;

namespace {

std::unique_ptr<MultipleEDAProvider> join(const Workload &system)
{
    return std::make_unique<MultipleEDAProvider>(system.providers(),
                                                 QList<QString>{MultipleEDAProvider::DEFAULT_CONNECTOR_COMPONENT_TYPE});
}

/// Boards, and their copies from numbers.
struct JoiningTask
{
    Workload system;
    std::unique_ptr<BareJoin> bare;
};

void verify(const MultipleEDAProvider &joined, const JoinedElements &bare)
{
    if (joined.getNets() != bare.nets || joined.boardNets() != bare.boardNets || joined.getParts() != bare.parts ||
        joined.getComponents() != bare.components)
        throw std::logic_error("bare copies hold other elements");
}

JoiningTask joiningTask(qsizetype nodes, Properties properties)
{
    JoiningTask task{sparseSystem(nodes, properties), nullptr};
    const auto joined = join(task.system);
    task.bare = std::make_unique<BareJoin>(task.system.providers(), *joined);
    verify(*joined, task.bare->make());
    return task;
}

const JoiningTask &keptTask(qsizetype nodes, Properties properties)
{
    const char *prefix = properties == Properties::Few ? "few properties " : "boards ";
    return kept(prefix + std::to_string(nodes), [=] { return joiningTask(nodes, properties); });
}

// In a thread of its own, which has not searched before: whatever the search keeps for a thread is part of the price.
double secondsOfFirstQuery(const Workload &system)
{
    const auto joined = join(system);
    const Query &query = system.queries.at(system.queries.size() / 2);
    double seconds = 0;
    qsizetype count = 0;
    std::thread([&] {
        QList<RoutingPath> paths;
        seconds = secondsOf([&] {
            paths =
                Routing(joined.get()).findPaths(query.source, query.sourcePin, query.destination, query.destinationPin);
        });
        count = paths.size();
    }).join();
    if (count != system.routeCount)
        throw std::logic_error("the first query finds another number of routes");
    return seconds;
}

void registerJoiningOf(const std::string &name, qsizetype nodes, Properties properties)
{
    registerComparison("joining/" + name, [=]() -> Comparison {
        const JoiningTask &task = keptTask(nodes, properties);
        return {{{"velk", [&] { return secondsToMake([&] { return join(task.system); }); }},
                 {"copies", [&] { return secondsToMake([&] { return task.bare->make(); }); }}},
                {{"nodes", static_cast<double>(task.system.nodeCount())}}};
    });
}
}

void registerJoining(const Suite &suite)
{
    for (const qsizetype nodes : suite.sizes) {
        if (nodes >= 10'000 || suite.isQuick)
            registerJoiningOf(std::to_string(nodes), nodes, Properties::AsExported);
    }
    registerJoiningOf("few-properties", suite.mainSize, Properties::Few);
    registerComparison("first-query/findPaths", [nodes = suite.mainSize]() -> Comparison {
        const Workload &system = keptTask(nodes, Properties::AsExported).system;
        return {{{"velk", [&] { return secondsOfFirstQuery(system); }}}, {}};
    })->Iterations(suite.isQuick ? 3 : 10);
}
}
