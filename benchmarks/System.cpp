#include "benchmarks/System.h"

#include "benchmarks/NetlistText.h"
#include "benchmarks/Suite.h"

#include <QFile>
#include <QHash>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <stdexcept>

namespace VelkBenchmarks {

using namespace Qt::StringLiterals;
using namespace Velk;

namespace {

QSharedPointer<const RelayContactMap> closingContacts(const EDAProvider &provider)
{
    RelayContactMap relays;
    const auto components = provider.getComponents();
    for (const auto &component : components) {
        const auto part = provider.getPartByName(component->part);
        if (component->type() != u"Relay"_s || part->pins.size() != 2)
            continue;
        const Contact contact{part->pins.at(0)->number, part->pins.at(1)->number};
        relays.insert(component->ref, {static_cast<int>(relays.size()), {{{}, {}}, {{}, {contact}}}});
    }
    return QSharedPointer<const RelayContactMap>::create(relays);
}
}

System::System(const Workload &workload)
    : queries(workload.queries)
    , queriesWithoutRoute(workload.queriesWithoutRoute)
    , routeCount(workload.routeCount)
    , maxSwitches(workload.maxSwitches)
    , maxAdditionalNodes(workload.maxAdditionalNodes)
    , provider(workload.providers(), {MultipleEDAProvider::DEFAULT_CONNECTOR_COMPONENT_TYPE})
    , routing(&provider)
    , realizable(&provider)
    , graph(provider)
{
    routing.setMaxSwitchingComponentsPerPath(maxSwitches);
    routing.setMaxAdditionalNodesPerPath(maxAdditionalNodes);
    realizable = routing;
    realizable.setRelayContacts(closingContacts(provider));
}

QList<RoutingPath> System::findPaths(const Query &query) const
{
    return routing.findPaths(query.source, query.sourcePin, query.destination, query.destinationPin);
}

QList<TracedPath> System::findTracedPaths(const Query &query) const
{
    return routing.findTracedPaths(query.source, query.sourcePin, query.destination, query.destinationPin);
}

QList<TracedPath> System::findRealizablePaths(const Query &query) const
{
    return realizable.findTracedPaths(query.source, query.sourcePin, query.destination, query.destinationPin);
}

std::vector<NumberedPath> System::floorPaths(const Query &query) const
{
    return Floor(graph, maxSwitches, maxAdditionalNodes).findPaths(sourceTerminal(query), destinationTerminal(query));
}

std::vector<std::vector<int>> System::comparable(const QList<RoutingPath> &paths) const
{
    QHash<const EDAComponent *, int> numbers;
    for (std::size_t i = 0; i < graph.components.size(); ++i)
        numbers.insert(graph.components[i].data(), static_cast<int>(i));
    std::vector<std::vector<int>> result;
    for (const auto &path : paths) {
        auto &row = result.emplace_back();
        for (const auto &component : path.switchingComponents)
            row.push_back(numbers.value(component.data(), SystemGraph::none));
    }
    std::sort(result.begin(), result.end());
    return result;
}

std::vector<std::vector<int>> System::comparable(const std::vector<NumberedPath> &paths)
{
    std::vector<std::vector<int>> result;
    result.reserve(paths.size());
    for (const auto &path : paths)
        result.push_back(path.components);
    std::sort(result.begin(), result.end());
    return result;
}

namespace {

/// After something big has been made or released, the heap takes a while to put what was freed in order.
template <typename Task>
void warmUp(Task task)
{
    const auto start = std::chrono::steady_clock::now();
    while (std::chrono::steady_clock::now() - start < std::chrono::milliseconds(300))
        task();
}
}

Facade facadeOn(const Workload &workload, const std::vector<std::string> &files)
{
    Facade result{std::make_unique<VelkRouting>(files), {}, static_cast<std::size_t>(workload.routeCount)};
    for (const auto &query : workload.queries)
        result.queries.emplace_back(query);
    return result;
}

std::vector<std::string> writeNetlists(const Workload &workload, const QTemporaryDir &folder)
{
    std::vector<std::string> names;
    for (const auto &board : workload.boards) {
        QFile file(folder.filePath(QString::number(names.size()) + u".net"_s));
        const QByteArray text = netlistText(*board);
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
            throw std::runtime_error("cannot write the netlists");
        names.push_back(file.fileName().toStdString());
    }
    return names;
}

Facade facadeOn(Workload workload)
{
    const QTemporaryDir folder;
    const auto names = writeNetlists(workload, folder);
    // Released before loading, so that the heap is tidied up by what follows and not by the first query.
    workload.boards.clear();
    return facadeOn(workload, names);
}

const System &keptSystem(const std::string &name, const std::function<Workload()> &make)
{
    return *kept("system " + name, [&] {
        auto system = std::make_unique<System>(make());
        warmUp([&] { system->findPaths(system->queries.front()); });
        return system;
    });
}

const Facade &keptFacade(const std::string &name, const std::function<Facade()> &make)
{
    return kept("facade " + name, [&] {
        Facade facade = make();
        warmUp([&] { facade.queries.front().getRoutes(*facade.routing); });
        return facade;
    });
}

namespace {

std::map<std::string, std::string> toStandard(const QMap<QString, QString> &properties)
{
    std::map<std::string, std::string> result;
    for (auto it = properties.cbegin(); it != properties.cend(); ++it)
        result.emplace(it.key().toStdString(), it.value().toStdString());
    return result;
}
}

FacadeQuery::FacadeQuery(const Query &query)
    : source(toStandard(query.source))
    , sourcePin(query.sourcePin.toStdString())
    , destination(toStandard(query.destination))
    , destinationPin(query.destinationPin.toStdString())
{
}

std::vector<VelkRoutingPath> FacadeQuery::getRoutes(const VelkRouting &routing) const
{
    return routing.getRoutes(source, sourcePin, destination, destinationPin);
}
}
