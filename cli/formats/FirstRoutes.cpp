#include "cli/formats/FirstRoutes.h"

#include <map>
#include <tuple>

using namespace Velk;

namespace VelkCli {

namespace {

class FirstRoutesInNumbers
{
public:
    void append(const QList<TracedPath> &routes)
    {
        FirstRoute first;
        first.routes = routes.size();
        if (!routes.isEmpty())
            describe(routes.first(), first);
        result.ofDuts.append(first);
    }

    FirstRoutes result;

private:
    void describe(const TracedPath &path, FirstRoute &route)
    {
        for (qsizetype i = 0; i < path.steps.size(); ++i)
            route.crossings.append(place(path.steps.at(i), path.netAfter(i)));
        for (const TracedNode &connection : path.additionalNodes)
            route.connections.append(place(connection));
    }

    int place(const TracedStep &step, const QSharedPointer<EDANet> &next)
    {
        const CrossingKey key{step.net.data(), next.data(),  step.component.data(),
                              step.entryPin,   step.exitPin, step.position};
        const auto [known, isNew] = crossingPlaces.try_emplace(key, static_cast<int>(result.crossings.size()));
        if (isNew)
            result.crossings.append({step, next});
        return known->second;
    }

    int place(const TracedNode &connection)
    {
        const ConnectionKey key{connection.net.data(), connection.node->ref, connection.node->pin};
        const auto [known, isNew] = connectionPlaces.try_emplace(key, static_cast<int>(result.connections.size()));
        if (isNew)
            result.connections.append(connection);
        return known->second;
    }

    using CrossingKey = std::tuple<const EDANet *, const EDANet *, const EDAComponent *, QString, QString, int>;
    using ConnectionKey = std::tuple<const EDANet *, QString, QString>;
    std::map<CrossingKey, int> crossingPlaces;
    std::map<ConnectionKey, int> connectionPlaces;
};
}

FirstRoutes firstRoutesOf(const QList<QList<TracedPath>> &routesToDuts)
{
    FirstRoutesInNumbers numbers;
    for (const auto &routes : routesToDuts)
        numbers.append(routes);
    return numbers.result;
}
}
