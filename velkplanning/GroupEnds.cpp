#include <velkplanning/GroupEnds.h>

#include <QHash>
#include <QString>

#include <algorithm>
#include <utility>

namespace Velk {

namespace {

/// Which components are on the side of the sources.
class ComponentSides
{
public:
    /// Of two components that are connected, the one is where the other is not.
    explicit ComponentSides(const std::vector<std::pair<QString, QString>> &connected)
    {
        for (const auto &[ref, other] : connected) {
            neighbours[ref].append(other);
            neighbours[other].append(ref);
        }
        for (const auto &[ref, other] : connected) {
            if (!isSource.contains(ref))
                placeAllFrom(ref);
        }
    }

    bool isSourceSide(const QString &ref) const { return isSource.value(ref); }

private:
    void placeAllFrom(const QString &first)
    {
        isSource.insert(first, true);
        QStringList placed = {first};
        while (!placed.isEmpty()) {
            const QString ref = placed.takeLast();
            for (const QString &neighbour : std::as_const(neighbours[ref])) {
                if (isSource.contains(neighbour))
                    continue;
                isSource.insert(neighbour, !isSource.value(ref));
                placed.append(neighbour);
            }
        }
    }

    QHash<QString, QStringList> neighbours;
    QHash<QString, bool> isSource;
};

const ExpectedConnection &firstBetweenNets(const PlanProblem &problem, const ConnectionGroup &group)
{
    const auto &connections = problem.request.connections;
    const auto found = std::find_if(group.connections.cbegin(), group.connections.cend(),
                                    [&](int i) { return connections.at(i).from.net != connections.at(i).to.net; });
    return connections.at(found == group.connections.cend() ? group.connections.front() : *found);
}
}

std::vector<GroupEnds> endsAsGiven(const PlanProblem &problem)
{
    std::vector<GroupEnds> ends;
    for (const ConnectionGroup &group : problem.groups) {
        const ExpectedConnection &connection = firstBetweenNets(problem, group);
        ends.push_back({connection.from.net, connection.to.net});
    }
    return ends;
}

std::vector<GroupEnds> endsBySide(const PlanProblem &problem)
{
    std::vector<std::pair<QString, QString>> connected;
    for (const ConnectionGroup &group : problem.groups) {
        const ExpectedConnection &connection = firstBetweenNets(problem, group);
        connected.emplace_back(connection.from.ref, connection.to.ref);
    }
    const ComponentSides sides(connected);
    auto ends = endsAsGiven(problem);
    for (std::size_t group = 0; group < ends.size(); ++group) {
        if (!sides.isSourceSide(connected[group].first))
            std::swap(ends[group].source, ends[group].target);
    }
    return ends;
}
}
