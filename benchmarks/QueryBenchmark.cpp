#include "benchmarks/PlainSearch.h"
#include "benchmarks/Suite.h"
#include "benchmarks/System.h"
#ifdef VELK_HAS_IGRAPH
#include "benchmarks/Igraph.h"
#endif

#include <malloc.h>

#include <algorithm>
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
};

const Query &queryOf(const System &system)
{
    return system.queries.at(system.queries.size() / 2);
}

bool areEqual(const QList<RoutingPath> &a, const QList<RoutingPath> &b)
{
    return std::equal(a.cbegin(), a.cend(), b.cbegin(), b.cend(), [](const auto &one, const auto &other) {
        return one.switchingComponents == other.switchingComponents && one.additionalNodes == other.additionalNodes;
    });
}

/// Throws unless all searches find the same routes.
void verify(const System &system)
{
    const Query &query = queryOf(system);
    const auto found = system.findPaths(query);
    if (found.size() != system.routeCount)
        throw std::logic_error("findPaths finds another number of routes: " + std::to_string(found.size()));
    const auto floor = system.floorPaths(query);
    if (System::comparable(floor) != system.comparable(found))
        throw std::logic_error("the bare search finds other routes: " + std::to_string(floor.size()));
    if (!areEqual(BareLists(system.graph, found).make(), found))
        throw std::logic_error("bare lists hold other routes");
    for (const auto &[name, routeless] : system.queriesWithoutRoute) {
        if (!system.findPaths(routeless).isEmpty() || !system.floorPaths(routeless).empty())
            throw std::logic_error("there is a route: " + name);
    }
}

const System &verifiedSystem(const Subject &subject)
{
    static std::set<std::string> verified;
    const System &system = keptSystem(subject.name, subject.make);
    if (verified.count(subject.name) == 0) {
        verify(system);
        verified.insert(subject.name);
    }
    return system;
}

std::function<QList<RoutingPath>()> listsOf(const System &system)
{
    const auto lists = std::make_shared<BareLists>(system.graph, system.findPaths(queryOf(system)));
    return [lists] { return lists->make(); };
}

std::function<std::vector<NumberedPath>()> bareSearchOf(const System &system)
{
    const auto floor = std::make_shared<Floor>(system.graph, system.maxSwitches, system.maxAdditionalNodes);
    const int source = system.sourceTerminal(queryOf(system));
    const int destination = system.destinationTerminal(queryOf(system));
    return [=] { return floor->findPaths(source, destination); };
}

template <typename Task>
Contender shortContender(const std::string &name, Task task)
{
    return {name, [task] { return secondsOfEach(task); }};
}

template <typename Task>
Contender longContender(const std::string &name, Task task)
{
    return {name, [task] { return secondsToMake(task); }};
}

void registerShortQuery(const Subject &subject, bool withBareSearch)
{
    registerComparison("query/" + subject.name + "/findPaths", [=]() -> Comparison {
        const System &system = verifiedSystem(subject);
        std::vector<Contender> contenders{shortContender("velk", [&] { return system.findPaths(queryOf(system)); }),
                                          shortContender("lists", listsOf(system))};
        if (withBareSearch)
            contenders.push_back(shortContender("search", bareSearchOf(system)));
        return {contenders, {}};
    });
}

/// Throws unless the contacts leave all ways, as many as without them.
void verifyRealizable(const System &system)
{
    const auto found = system.findRealizablePaths(queryOf(system));
    if (found.size() != system.routeCount || found.first().steps.isEmpty())
        throw std::logic_error("another number of routes is realizable: " + std::to_string(found.size()));
    const auto hasPosition = [](const TracedStep &step) { return step.position == 1; };
    if (std::none_of(found.first().steps.cbegin(), found.first().steps.cend(), hasPosition))
        throw std::logic_error("no position is told");
}

void registerShortRealizableQuery(const Subject &subject)
{
    registerComparison("query/" + subject.name + "/realizable", [=]() -> Comparison {
        const System &system = verifiedSystem(subject);
        verifyRealizable(system);
        return {{shortContender("velk", [&] { return system.findRealizablePaths(queryOf(system)); }),
                 shortContender("drawn", [&] { return system.findTracedPaths(queryOf(system)); })},
                {}};
    });
}

void registerLongRealizableQuery(const Subject &subject)
{
    registerComparison("query/dense/" + subject.name + "/realizable", [=]() -> Comparison {
        const System &system = verifiedSystem(subject);
        verifyRealizable(system);
        return {{longContender("velk", [&] { return system.findRealizablePaths(queryOf(system)); }),
                 longContender("drawn", [&] { return system.findTracedPaths(queryOf(system)); })},
                {{"routes", static_cast<double>(system.routeCount)}}};
    });
}

void registerQueryWithoutRoute(const Subject &subject, const std::string &name)
{
    registerComparison("query/" + subject.name + '/' + name, [=]() -> Comparison {
        const System &system = verifiedSystem(subject);
        const Query &query = system.queriesWithoutRoute.at(name);
        return {{shortContender("velk", [&] { return system.findPaths(query); })}, {}};
    });
}

/// The yardstick is a copy of the answer, which is made of records as they lie ready.
void registerFacadeQuery(const std::string &name, const std::function<Facade()> &load)
{
    registerComparison("query/" + name + "/getRoutes", [=]() -> Comparison {
        const Facade &facade = keptFacade(name, load);
        const FacadeQuery &query = facade.queries.at(facade.queries.size() / 2);
        const auto answer = query.getRoutes(*facade.routing);
        if (answer.size() != facade.routeCount)
            throw std::logic_error("getRoutes finds another number of routes");
        return {{shortContender("velk", [&] { return query.getRoutes(*facade.routing); }),
                 shortContender("records", [answer] { return std::vector<VelkRoutingPath>(answer); })},
                {}};
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
    registerComparison("query/pairs/getRoutes", [=]() -> Comparison {
        const Facade &facade = keptFacade(systemName, load);
        const std::size_t trees = std::min<std::size_t>(100, facade.queries.size());
        if (routesOfAllPairs(facade, trees) != facade.routeCount * trees)
            throw std::logic_error("getRoutes finds another number of routes");
        return {{longContender("velk", [=, &facade] { return routesOfAllPairs(facade, trees); })},
                {{"queries", static_cast<double>(trees * trees)}}};
    });
}

void registerFirstFacadeQuery(const std::function<Facade()> &load)
{
    registerComparison("first-query/getRoutes", [=]() -> Comparison {
        return {{{"velk",
                  [=] {
                      const Facade facade = load();
                      return secondsToMake([&] { return facade.queries.front().getRoutes(*facade.routing); });
                  }}},
                {}};
    })->Iterations(1);
}

/// The source is the second instrument of its kind, and the relays of one card have that number too: many components
/// have one of the wanted properties, one has both.
void registerCommonProperties(const Subject &subject)
{
    registerComparison("query/common-properties/findPaths", [=]() -> Comparison {
        const System &system = verifiedSystem(subject);
        const auto find = [&](const Query &query) { return [&] { return system.findPaths(query); }; };
        return {{shortContender("velk", find(system.queries.at(1))), shortContender("rare", find(queryOf(system)))},
                {}};
    });
}

void registerSparse(const Suite &suite)
{
    for (const qsizetype nodes : suite.sizes) {
        const bool isMain = nodes == suite.mainSize;
        const Subject subject{"sparse/" + std::to_string(nodes), [=] { return sparseSystem(nodes); }};
        registerShortQuery(subject, true);
        for (const char *name : {"from-ground", "to-ground", "other-dut"})
            registerQueryWithoutRoute(subject, name);
        if (isMain) {
            registerCommonProperties(subject);
            registerShortRealizableQuery(subject);
        }
        const Subject switched{"switched-ground/" + std::to_string(nodes),
                               [=] { return sparseSystem(nodes, Properties::AsExported, Ground::Switches); }};
        registerShortQuery(switched, false); // which looks through all of ground each time
        registerQueryWithoutRoute(switched, "other-dut");

        const auto load = [=] { return facadeOn(sparseSystem(nodes)); };
        registerFacadeQuery(subject.name, load);
        if (isMain) {
            registerAllPairs(subject.name, load);
            registerFirstFacadeQuery(load);
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
    const Subject subject{"exported", exportedSystem};
    registerShortQuery(subject, true);
    if (!suite.isQuick) {
        registerComparison("query/exported/plain-search",
                           [=]() -> Comparison {
                               return {{{"plain", [=] { return secondsOfPlainSearch(verifiedSystem(subject)); }}}, {}};
                           })
            ->Iterations(1)
            ->Repetitions(1);
    }
    registerFacadeQuery("exported", [] { return facadeOn(exportedSystem(), exportedNetlists()); });
}

/// What lists hold on the heap. Of the main arena, so in the main thread.
std::size_t heapInUse()
{
    const auto info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

double bytesPerPath(const System &system)
{
    const std::size_t before = heapInUse();
    const auto paths = system.findPaths(queryOf(system));
    return static_cast<double>(heapInUse() - before) / static_cast<double>(paths.size());
}

#ifdef VELK_HAS_IGRAPH
/// Throws unless it lists the routes.
std::shared_ptr<Igraph> verifiedIgraph(const System &system)
{
    const Query &query = queryOf(system);
    auto igraph =
        std::make_shared<Igraph>(system.graph, system.sourceTerminal(query), system.destinationTerminal(query),
                                 system.maxSwitches, system.maxAdditionalNodes);
    igraph->findPaths();
    if (igraph->sortedPaths() != system.comparable(system.findPaths(query)))
        throw std::logic_error("igraph lists other routes");
    return igraph;
}
#endif

void registerLongQuery(const Subject &subject)
{
    registerComparison("query/dense/" + subject.name + "/findPaths", [=]() -> Comparison {
        const System &system = verifiedSystem(subject);
        return {{longContender("velk", [&] { return system.findPaths(queryOf(system)); }),
                 longContender("lists", listsOf(system)), longContender("search", bareSearchOf(system))},
                {{"routes", static_cast<double>(system.routeCount)}, {"bytes_per_path", bytesPerPath(system)}}};
    });
#ifdef VELK_HAS_IGRAPH
    registerComparison("query/dense/" + subject.name + "/igraph", [=]() -> Comparison {
        const System &system = verifiedSystem(subject);
        const auto igraph = verifiedIgraph(system);
        return {{{"igraph", [=] { return secondsOf([&] { igraph->findPaths(); }); }}}, {}};
    })->Iterations(1); // it may take long
#endif
}
}

void registerQueries(const Suite &suite)
{
    registerSparse(suite);
    registerExported(suite);
    for (const auto &[name, make] : suite.dense) {
        registerLongQuery({name, make});
        registerLongRealizableQuery({name, make});
    }
}
}
