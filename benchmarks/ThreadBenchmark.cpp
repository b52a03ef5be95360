#include "benchmarks/Suite.h"
#include "benchmarks/System.h"

#include <stdexcept>
#include <thread>

namespace VelkBenchmarks {

namespace {

/// Two queries on one Routing, each asked a number of times.
struct TwoQueries
{
    const System &system;
    const Query &first;
    const Query &second;
    int times;

    // The routes are released where they were made, as a thread that uses its own routes does.
    void ask(const Query &query, qsizetype &routeCount) const
    {
        for (int i = 0; i < times; ++i)
            routeCount = system.findPaths(query).size();
    }
};

void expectRoutes(const TwoQueries &queries, qsizetype ofFirst, qsizetype ofSecond)
{
    if (ofFirst != queries.system.routeCount || ofSecond != queries.system.routeCount)
        throw std::logic_error("a thread finds another number of routes");
}

// In a thread too, so that both ways differ in nothing else.
double secondsOneAfterTheOther(const TwoQueries &queries)
{
    qsizetype ofFirst = 0;
    qsizetype ofSecond = 0;
    const double seconds = secondsOf([&] {
        std::thread([&] {
            queries.ask(queries.first, ofFirst);
            queries.ask(queries.second, ofSecond);
        }).join();
    });
    expectRoutes(queries, ofFirst, ofSecond);
    return seconds;
}

double secondsAtOnce(const TwoQueries &queries)
{
    qsizetype ofFirst = 0;
    qsizetype ofSecond = 0;
    const double seconds = secondsOf([&] {
        std::thread other([&] { queries.ask(queries.second, ofSecond); });
        std::thread([&] { queries.ask(queries.first, ofFirst); }).join();
        other.join();
    });
    expectRoutes(queries, ofFirst, ofSecond);
    return seconds;
}

void registerPair(const std::string &name, const std::function<TwoQueries()> &prepare)
{
    registerComparison("threads/" + name, [=]() -> Comparison {
        const TwoQueries queries = prepare();
        return {{{"at_once", [=] { return secondsAtOnce(queries); }},
                 {"one_after_the_other", [=] { return secondsOneAfterTheOther(queries); }}},
                {}};
    });
}
}

void registerThreads(const Suite &suite)
{
    const auto dense = [system = suite.dense.back()]() -> const System & {
        return keptSystem(system.name, system.make);
    };
    const auto sparse = [nodes = suite.mainSize]() -> const System & {
        return keptSystem("sparse/" + std::to_string(nodes), [&] { return sparseSystem(nodes); });
    };
    const auto pairOn = [](const System &system, bool isSame, int times) {
        const Query &last = system.queries.back();
        return TwoQueries{system, isSame ? last : system.queries.at((system.queries.size() - 1) / 2), last, times};
    };
    registerPair("dense/same-query", [=] { return pairOn(dense(), true, 1); });
    registerPair("dense/two-queries", [=] { return pairOn(dense(), false, 1); });
    registerPair("sparse/same-query", [=] { return pairOn(sparse(), true, 5'000); });
    registerPair("sparse/two-queries", [=] { return pairOn(sparse(), false, 5'000); });
}
}
