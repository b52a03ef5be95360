#include <velkplanning/ScarceNets.h>

#include <velkplanning/DisjointWays.h>
#include <velkplanning/GroupEnds.h>

#include <algorithm>

namespace Velk {

namespace {

/// All ways that could be, each net being on one of them only: an edge from its way in to its way out.
class NetWays
{
public:
    explicit NetWays(const PlanProblem &planProblem)
        : problem(planProblem)
        , netCount(planProblem.network.model.netCount())
        , ways(2 * netCount)
    {
        for (int net = 0; net < netCount; ++net)
            ways.addEdge(wayIn(net), wayOut(net), 1);
        for (const SwitchLink &link : problem.network.links) {
            if (problem.isPossible(link))
                connect(link.net, link.otherNet);
        }
        const auto &passives = problem.network.model.passives();
        for (int passive = 0; passive < static_cast<int>(passives.size()); ++passive) {
            if (!problem.isExcluded(passive))
                connectAll(passives[static_cast<std::size_t>(passive)].nets);
        }
    }

    /// Nets that lie across all ways between the ends, if there are fewer of them than groups.
    std::vector<int> scarceNetsBetween(const std::vector<GroupEnds> &ends)
    {
        const int source = ways.addNode();
        const int target = ways.addNode();
        for (const GroupEnds &group : ends) {
            ways.addEdge(source, wayIn(group.source), many);
            ways.addEdge(wayOut(group.target), target, many);
        }
        for (std::size_t i = 0; i < ends.size(); ++i) {
            if (!ways.addWay(source, target))
                return netsAcross();
        }
        return {};
    }

private:
    static constexpr int many = 1 << 30; // so that nets alone lie across

    int wayIn(int net) const { return 2 * net; }
    int wayOut(int net) const { return 2 * net + 1; }

    void connect(int net, int other)
    {
        if (problem.isBarred(net) || problem.isBarred(other))
            return;
        ways.addEdge(wayOut(net), wayIn(other), many);
        ways.addEdge(wayOut(other), wayIn(net), many);
    }

    void connectAll(const std::vector<int> &nets)
    {
        const int node = ways.addNode();
        for (const int net : nets) {
            if (problem.isBarred(net))
                continue;
            ways.addEdge(wayOut(net), node, many);
            ways.addEdge(node, wayIn(net), many);
        }
    }

    std::vector<int> netsAcross() const
    {
        std::vector<int> nets;
        for (int net = 0; net < netCount; ++net) {
            if (ways.isReached(wayIn(net)) && !ways.isReached(wayOut(net)))
                nets.push_back(net);
        }
        return nets;
    }

    const PlanProblem &problem;
    const int netCount;
    DisjointWays ways;
};
}

// Ways are sought from any source to any target, so it counts which end of a group is which.
std::vector<int> scarceNetsOf(const PlanProblem &problem)
{
    std::vector<std::vector<GroupEnds>> tried;
    for (const auto &ends : {endsBySide(problem), endsAsGiven(problem), endsByNearness(problem)}) {
        if (std::find(tried.cbegin(), tried.cend(), ends) != tried.cend())
            continue;
        auto nets = NetWays(problem).scarceNetsBetween(ends);
        if (!nets.empty())
            return nets;
        tried.push_back(ends);
    }
    return {};
}
}
