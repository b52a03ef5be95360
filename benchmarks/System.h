#ifndef VELK_BENCHMARKS_SYSTEM_H
#define VELK_BENCHMARKS_SYSTEM_H

#include "benchmarks/BareLists.h"
#include "benchmarks/Floor.h"
#include "benchmarks/Workload.h"

#include <velk/facade/VelkRouting.h>
#include <velk/provider/MultipleEDAProvider.h>
#include <velk/routing/Routing.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

class QTemporaryDir;

namespace VelkBenchmarks {

/// A joined system that is ready to be searched, with the arrays that the yardsticks search instead.
class System
{
public:
    explicit System(const Workload &workload);

    QList<Velk::RoutingPath> findPaths(const Query &query) const;
    QList<Velk::TracedPath> findTracedPaths(const Query &query) const;
    /// The same where each relay of two pins is known to be a contact that closes.
    QList<Velk::TracedPath> findRealizablePaths(const Query &query) const;
    int sourceTerminal(const Query &query) const { return graph.terminal(provider, query.source, query.sourcePin); }
    int destinationTerminal(const Query &query) const
    {
        return graph.terminal(provider, query.destination, query.destinationPin);
    }
    std::vector<NumberedPath> floorPaths(const Query &query) const;

    /// The components of each path, sorted: what all searches must agree on.
    std::vector<std::vector<int>> comparable(const QList<Velk::RoutingPath> &paths) const;
    static std::vector<std::vector<int>> comparable(const std::vector<NumberedPath> &paths);

    const std::vector<Query> queries;
    const std::map<std::string, Query> queriesWithoutRoute;
    const qsizetype routeCount; ///< of each query
    const int maxSwitches;
    const int maxAdditionalNodes;
    Velk::MultipleEDAProvider provider;
    Velk::Routing routing;
    Velk::Routing realizable; ///< the same with contacts of relays
    const SystemGraph graph;
};

/// The system of that name, ready to be measured.
const System &keptSystem(const std::string &name, const std::function<Workload()> &make);

/// Arguments of VelkRouting::getRoutes().
struct FacadeQuery
{
    explicit FacadeQuery(const Query &query);
    std::vector<Velk::VelkRoutingPath> getRoutes(const Velk::VelkRouting &routing) const;

    std::map<std::string, std::string> source;
    std::string sourcePin;
    std::map<std::string, std::string> destination;
    std::string destinationPin;
};

/// VelkRouting with a system that it has read from files.
struct Facade
{
    std::unique_ptr<Velk::VelkRouting> routing;
    std::vector<FacadeQuery> queries;
    std::size_t routeCount; ///< of each query
};

Facade facadeOn(const Workload &workload, const std::vector<std::string> &files);
/// Writes the boards as netlists first.
Facade facadeOn(Workload workload);

/// The boards as netlists in a folder of their own.
std::vector<std::string> writeNetlists(const Workload &workload, const QTemporaryDir &folder);

/// The facade of that name, ready to be measured.
const Facade &keptFacade(const std::string &name, const std::function<Facade()> &make);
}

#endif
