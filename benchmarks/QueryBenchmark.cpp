#include "benchmarks/PlainSearch.h"
#include "benchmarks/Suite.h"
#include "benchmarks/System.h"
#ifdef VELK_HAS_IGRAPH
#include "benchmarks/Igraph.h"
#endif

#include <malloc.h>

#include <set>
#include <stdexcept>

namespace VelkBenchmarks {

using namespace Velk;

namespace {

/// A system and its name in the results.
struct Subject
{
    std::string name;
    std::function<Workload()> make;
    bool comparesWithIgraph = true;
};

const Query &queryOf(const System &system)
{
    return system.queries.at(system.queries.size() / 2);
}

/// Throws unless all searches find the same routes.
void verify(const System &system, bool alsoIgraph)
{
    const Query &query = queryOf(system);
    const auto found = system.findPaths(query);
    if (found.size() != system.routeCount)
        throw std::logic_error("findPaths finds another number of routes: " + std::to_string(found.size()));
    const auto routes = system.comparable(found);
    const auto floor = system.floorPaths(query);
    if (System::comparable(floor) != routes)
        throw std::logic_error("the bare search finds other routes: " + std::to_string(floor.size()));
    if (system.comparable(system.materialise(floor)) != routes)
        throw std::logic_error("bare lists hold other routes");
#ifdef VELK_HAS_IGRAPH
    if (alsoIgraph) {
        Igraph igraph(system.graph, system.maxSwitches);
        igraph.findPaths(system.sourceTerminal(query), system.destinationTerminal(query));
        const auto paths = igraph.paths(system.sourceTerminal(query), system.maxAdditionalNodes);
        if (System::comparable(paths) != routes)
            throw std::logic_error("igraph finds other routes: " + std::to_string(paths.size()));
    }
#else
    static_cast<void>(alsoIgraph);
#endif
}

const System &verifiedSystem(const Subject &subject)
{
    static std::set<std::string> verified;
    const System &system = keptSystem(subject.name, subject.make);
    if (verified.count(subject.name) == 0) {
        verify(system, subject.comparesWithIgraph);
        verified.insert(subject.name);
    }
    return system;
}

/// For short tasks: as many calls as it takes, what they return being released within the time.
template <typename MakeTask>
void registerLoop(const std::string &name, MakeTask makeTask)
{
    benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State &state) {
        try {
            const auto task = makeTask();
            for ([[maybe_unused]] auto step : state)
                benchmark::DoNotOptimize(task());
        } catch (const std::exception &failure) {
            state.SkipWithError(failure.what());
        }
    })->Unit(benchmark::kMicrosecond);
}

void registerShortQuery(const Subject &subject)
{
    registerLoop("query/" + subject.name + "/findPaths", [=] {
        const System &system = verifiedSystem(subject);
        return [&system, query = queryOf(system)] { return system.findPaths(query); };
    });
    registerLoop("query/" + subject.name + "/materialise", [=] {
        const System &system = verifiedSystem(subject);
        return [&system, paths = system.floorPaths(queryOf(system))] { return system.materialise(paths); };
    });
    registerLoop("query/" + subject.name + "/floor", [=] {
        const System &system = verifiedSystem(subject);
        const auto floor = std::make_shared<Floor>(system.graph, system.maxSwitches, system.maxAdditionalNodes);
        const int source = system.sourceTerminal(queryOf(system));
        const int destination = system.destinationTerminal(queryOf(system));
        return [=] { return floor->findPaths(source, destination); };
    });
}

void registerFacadeQuery(const std::string &name, const std::function<Facade()> &load)
{
    registerLoop("query/" + name + "/getRoutes", [=] {
        const Facade &facade = keptFacade(name, load);
        const FacadeQuery &query = facade.queries.at(facade.queries.size() / 2);
        if (query.getRoutes(*facade.routing).size() != facade.routeCount)
            throw std::logic_error("getRoutes finds another number of routes");
        return [&] { return query.getRoutes(*facade.routing); };
    });
}

std::size_t routesOfAllPairs(const Facade &facade, std::size_t trees)
{
    std::size_t routes = 0;
    for (std::size_t from = 0; from < trees; ++from) {
        const FacadeQuery &source = facade.queries[from];
        for (std::size_t to = 0; to < trees; ++to) {
            const FacadeQuery &target = facade.queries[to];
            routes +=
                facade.routing->getRoutes(source.source, source.sourcePin, target.destination, target.destinationPin)
                    .size();
        }
    }
    return routes;
}

/// From each instrument of the first hundred trees to each of their DUTs; the routes stay within a tree.
void registerAllPairs(const std::string &systemName, const std::function<Facade()> &load)
{
    const auto body = [=](benchmark::State &state) {
        try {
            const Facade &facade = keptFacade(systemName, load);
            const std::size_t trees = std::min<std::size_t>(100, facade.queries.size());
            if (routesOfAllPairs(facade, trees) != facade.routeCount * trees)
                throw std::logic_error("getRoutes finds another number of routes");
            for ([[maybe_unused]] auto step : state)
                benchmark::DoNotOptimize(routesOfAllPairs(facade, trees));
            state.counters["queries"] = static_cast<double>(trees * trees);
        } catch (...) {
            reportFailure(state);
        }
    };
    benchmark::RegisterBenchmark("query/pairs/getRoutes", body)->Unit(benchmark::kMillisecond);
}

void registerFirstFacadeQuery(const std::function<Facade()> &load, int iterations)
{
    registerTimed("first-query/getRoutes", [=](benchmark::State &) {
        const Facade facade = load();
        return secondsOf([&] { facade.queries.front().getRoutes(*facade.routing); });
    })->Iterations(iterations);
}

/// The source is the second instrument of its kind, and the relays of one card have that number too: many components
/// have one of the wanted properties, one has both.
void registerCommonProperties(const std::string &systemName, qsizetype nodes)
{
    registerLoop("query/common-properties/findPaths", [=] {
        const System &system = keptSystem(systemName, [=] { return sparseSystem(nodes); });
        return [&system] { return system.findPaths(system.queries.at(1)); };
    });
}

void registerSparse(const Suite &suite)
{
    for (const qsizetype nodes : suite.sizes) {
        const std::string name = "sparse/" + std::to_string(nodes);
        registerShortQuery({name, [=] { return sparseSystem(nodes); }, nodes <= suite.mainSize});
        const auto load = [=] { return facadeOn(sparseSystem(nodes)); };
        registerFacadeQuery(name, load);
        if (nodes == suite.mainSize) {
            registerAllPairs(name, load);
            registerFirstFacadeQuery(load, suite.isQuick ? 1 : 3);
            registerCommonProperties(name, nodes);
        }
    }
    registerFacadeQuery("sparse/few-properties",
                        [=] { return facadeOn(sparseSystem(suite.mainSize, Properties::Few)); });
}

double secondsOfPlainSearch(const System &system)
{
    const Query &query = queryOf(system);
    PlainSearch search(system.provider, system.maxSwitches, system.maxAdditionalNodes);
    QList<RoutingPath> paths;
    const double seconds = secondsOf(
        [&] { paths = search.findPaths(query.source, query.sourcePin, query.destination, query.destinationPin); });
    if (system.comparable(paths) != system.comparable(system.findPaths(query)))
        throw std::logic_error("the exhaustive search finds other routes");
    return seconds;
}

void registerExported(const Suite &suite)
{
    const Subject subject{"exported", exportedSystem, false};
    registerShortQuery(subject);
    if (!suite.isQuick) {
        const auto run = [=](benchmark::State &) { return secondsOfPlainSearch(verifiedSystem(subject)); };
        registerTimed("query/exported/plain-search", run)->Iterations(1)->Repetitions(1);
    }
    registerFacadeQuery("exported", [] { return facadeOn(exportedSystem(), exportedNetlists()); });
}

/// What the lists hold on the heap. Of the main arena, so in the main thread.
std::size_t heapInUse()
{
    const auto info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

double secondsToFind(const System &system, benchmark::State &state)
{
    const Query &query = queryOf(system);
    QList<RoutingPath> paths;
    const std::size_t before = heapInUse();
    const double seconds = secondsOf([&] { paths = system.findPaths(query); });
    state.counters["bytes_per_path"] =
        static_cast<double>(heapInUse() - before) / static_cast<double>(std::max<qsizetype>(paths.size(), 1));
    state.counters["routes"] = static_cast<double>(paths.size());
    return seconds;
}

double secondsToMaterialise(const System &system)
{
    const auto paths = system.floorPaths(queryOf(system));
    QList<RoutingPath> made;
    return secondsOf([&] { made = system.materialise(paths); });
}

double secondsOfFloor(const System &system)
{
    Floor floor(system.graph, system.maxSwitches, system.maxAdditionalNodes);
    const int source = system.sourceTerminal(queryOf(system));
    const int destination = system.destinationTerminal(queryOf(system));
    std::vector<NumberedPath> paths;
    return secondsOf([&] { paths = floor.findPaths(source, destination); });
}

#ifdef VELK_HAS_IGRAPH
double secondsOfIgraph(const System &system)
{
    Igraph igraph(system.graph, system.maxSwitches);
    const int source = system.sourceTerminal(queryOf(system));
    const int destination = system.destinationTerminal(queryOf(system));
    return secondsOf([&] { igraph.findPaths(source, destination); });
}
#endif

void registerLongQuery(const Subject &subject)
{
    const auto name = [&](const char *search) { return "query/" + subject.name + '/' + search; };
    registerTimed(name("findPaths"),
                  [=](benchmark::State &state) { return secondsToFind(verifiedSystem(subject), state); });
    registerTimed(name("materialise"),
                  [=](benchmark::State &) { return secondsToMaterialise(verifiedSystem(subject)); });
    registerTimed(name("floor"), [=](benchmark::State &) { return secondsOfFloor(verifiedSystem(subject)); });
#ifdef VELK_HAS_IGRAPH
    registerTimed(name("igraph"), [=](benchmark::State &) { return secondsOfIgraph(verifiedSystem(subject)); })
        ->Iterations(1)
        ->Repetitions(3); // it may take long
#endif
}
}

void registerQueries(const Suite &suite)
{
    registerSparse(suite);
    registerExported(suite);
    for (const Cascade &cascade : suite.dense)
        registerLongQuery({"dense/" + cascade.name, [=] { return cascade.make(); }});
    registerLongQuery({"cascade/" + suite.bigMatrices.name, [=] { return suite.bigMatrices.make(); }});
}
}
