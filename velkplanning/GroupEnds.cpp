#include <velkplanning/GroupEnds.h>

#include <velkplanning/Places.h>

#include <QHash>
#include <QString>

#include <algorithm>
#include <limits>
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

/// How many links and passives lead from the net to each other one.
std::vector<int> stepsFrom(int net, const PlanProblem &problem)
{
    const SwitchNetwork &network = problem.network;
    constexpr int never = std::numeric_limits<int>::max();
    std::vector<int> steps(placeOf(network.model.netCount()), never);
    std::vector<bool> isPassed(network.model.passives().size());
    std::vector<int> reached;
    const auto reach = [&](int other, int count) {
        int &known = steps[placeOf(other)];
        if (problem.isBarred(other) || known != never)
            return;
        known = count;
        reached.push_back(other);
    };
    reach(net, 0);
    for (std::size_t i = 0; i < reached.size(); ++i) {
        const int from = reached[i];
        const int next = steps[placeOf(from)] + 1;
        for (const int link : network.linksOfNet.of(from))
            reach(network.links[placeOf(link)].otherEnd(from), next);
        for (const int passive : network.passivesOfNet.of(from)) {
            if (isPassed[placeOf(passive)])
                continue;
            isPassed[placeOf(passive)] = true;
            for (const int other : network.model.passives()[placeOf(passive)].nets)
                reach(other, next);
        }
    }
    return steps;
}

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

std::vector<GroupEnds> endsByNearness(const PlanProblem &problem)
{
    auto ends = endsAsGiven(problem);
    if (ends.empty())
        return ends;
    const auto steps = stepsFrom(ends.front().source, problem);
    for (GroupEnds &group : ends) {
        if (steps[placeOf(group.target)] < steps[placeOf(group.source)])
            std::swap(group.source, group.target);
    }
    return ends;
}
}
