#include <velkplanning/ScarceNets.h>

#include <QHash>

#include <algorithm>
#include <utility>

namespace Velk {

namespace {

using NetPair = std::pair<int, int>;

/// Ways that have no net in common. Each net is an edge, from its way in to its way out; so is each link, in both
/// directions. Passives are nodes by themselves.
class DisjointWays
{
public:
    explicit DisjointWays(const PlanProblem &planProblem)
        : problem(planProblem)
        , netCount(planProblem.network.model.netCount())
        , edgesOf(static_cast<std::size_t>(2 * netCount) + planProblem.network.model.passives().size() + 2)
    {
        addNets();
        addLinks();
        addPassives();
    }

    /// How many there are from the first to the second nets.
    int count(const std::vector<NetPair> &ends)
    {
        for (const auto &[from, to] : ends) {
            addEdge(source(), wayIn(from), many);
            addEdge(wayOut(to), target(), many);
        }
        int ways = 0;
        while (findWay()) {
            takeWay();
            ++ways;
        }
        return ways;
    }

    /// After count(), as many nets, which lie across all ways.
    std::vector<int> crossedNets() const
    {
        std::vector<int> nets;
        for (int net = 0; net < netCount; ++net) {
            if (isReached(wayIn(net)) && !isReached(wayOut(net)))
                nets.push_back(net);
        }
        return nets;
    }

private:
    struct Edge
    {
        int to;
        int room;
    };
    static constexpr int many = 1 << 20;

    int wayIn(int net) const { return 2 * net; }
    int wayOut(int net) const { return 2 * net + 1; }
    int source() const { return static_cast<int>(edgesOf.size()) - 2; }
    int target() const { return static_cast<int>(edgesOf.size()) - 1; }
    bool isReached(int node) const { return reachedBy[static_cast<std::size_t>(node)] != none; }
    bool isOpen(int net) const { return !problem.isBarred(net); }

    void addEdge(int from, int to, int room)
    {
        edgesOf[static_cast<std::size_t>(from)].push_back(static_cast<int>(edges.size()));
        edges.push_back({to, room});
        edgesOf[static_cast<std::size_t>(to)].push_back(static_cast<int>(edges.size()));
        edges.push_back({from, 0});
    }

    void addNets()
    {
        for (int net = 0; net < netCount; ++net)
            addEdge(wayIn(net), wayOut(net), 1);
    }

    void addLinks()
    {
        for (const SwitchLink &link : problem.network.links) {
            if (!problem.isPossible(link) || !isOpen(link.net) || !isOpen(link.otherNet))
                continue;
            addEdge(wayOut(link.net), wayIn(link.otherNet), 1);
            addEdge(wayOut(link.otherNet), wayIn(link.net), 1);
        }
    }

    void addPassives()
    {
        const auto &passives = problem.network.model.passives();
        for (std::size_t i = 0; i < passives.size(); ++i) {
            if (problem.isExcluded(static_cast<int>(i)))
                continue;
            const int node = 2 * netCount + static_cast<int>(i);
            for (const int net : passives[i].nets) {
                if (!isOpen(net))
                    continue;
                addEdge(wayOut(net), node, 1);
                addEdge(node, wayIn(net), 1);
            }
        }
    }

    bool findWay()
    {
        reachedBy.assign(edgesOf.size(), none);
        reachedBy[static_cast<std::size_t>(source())] = start;
        std::vector<int> reached = {source()};
        for (std::size_t i = 0; i < reached.size() && !isReached(target()); ++i) {
            for (const int edge : edgesOf[static_cast<std::size_t>(reached[i])]) {
                const Edge &taken = edges[static_cast<std::size_t>(edge)];
                if (taken.room == 0 || isReached(taken.to))
                    continue;
                reachedBy[static_cast<std::size_t>(taken.to)] = edge;
                reached.push_back(taken.to);
            }
        }
        return isReached(target());
    }

    void takeWay()
    {
        for (int node = target(); node != source();) {
            const auto edge = static_cast<std::size_t>(reachedBy[static_cast<std::size_t>(node)]);
            --edges[edge].room;
            ++edges[edge ^ 1].room;
            node = edges[edge ^ 1].to;
        }
    }

    static constexpr int none = -1;
    static constexpr int start = -2;

    const PlanProblem &problem;
    const int netCount;
    std::vector<std::vector<int>> edgesOf; ///< by node; each edge is followed by the one back
    std::vector<Edge> edges;
    std::vector<int> reachedBy; ///< by node, an edge
};

/// Of each group one connection, as it was asked for.
std::vector<NetPair> endsOf(const PlanProblem &problem)
{
    std::vector<NetPair> ends;
    for (const ConnectionGroup &group : problem.groups) {
        NetPair pair(group.nets.front(), group.nets.front());
        for (const int i : group.connections) {
            const ExpectedConnection &connection = problem.request.connections.at(i);
            if (pair.first == pair.second)
                pair = {connection.from.net, connection.to.net};
        }
        ends.push_back(pair);
    }
    return ends;
}

/// The same, but turned so that each component is on one side, as far as that goes: people do not care which end of a
/// connection comes first.
std::vector<NetPair> sortedEndsOf(const PlanProblem &problem)
{
    QHash<int, QString> refs;
    for (const ConnectionGroup &group : problem.groups) {
        for (const InterfacePin &pin : group.pins)
            refs.insert(pin.net, pin.ref);
    }
    auto ends = endsOf(problem);
    QHash<QString, bool> isFirst;
    for (bool isChanged = true; isChanged;) {
        isChanged = false;
        for (auto &[from, to] : ends) {
            const QString &fromRef = refs[from];
            const QString &toRef = refs[to];
            if (isFirst.contains(fromRef) == isFirst.contains(toRef))
                continue;
            const bool isKnownFirst = isFirst.contains(fromRef) ? isFirst[fromRef] : !isFirst[toRef];
            isFirst[fromRef] = isKnownFirst;
            isFirst[toRef] = !isKnownFirst;
            isChanged = true;
        }
        const auto open = std::find_if(ends.cbegin(), ends.cend(),
                                       [&](const NetPair &pair) { return !isFirst.contains(refs[pair.first]); });
        if (!isChanged && open != ends.cend()) {
            isFirst[refs[open->first]] = true;
            isFirst[refs[open->second]] = refs[open->first] == refs[open->second];
            isChanged = true;
        }
    }
    for (auto &[from, to] : ends) {
        if (!isFirst[refs[from]])
            std::swap(from, to);
    }
    return ends;
}
}

std::vector<int> scarceNetsOf(const PlanProblem &problem)
{
    for (const auto &ends : {endsOf(problem), sortedEndsOf(problem)}) {
        DisjointWays ways(problem);
        if (ways.count(ends) < problem.groupCount())
            return ways.crossedNets();
    }
    return {};
}
}
