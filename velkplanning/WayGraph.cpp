#include <velkplanning/WayGraph.h>

#include <velkplanning/Places.h>

#include <algorithm>
#include <limits>

namespace Velk {

namespace {

WayGraph::Weights weightsIn(const PlanProblem &problem)
{
    using Weight = WayGraph::Weight;
    constexpr Weight divisible = 840; // costs can be shared by up to eight without rest
    constexpr double most = 1e18;     // that all of a plan may weigh
    const Weight gangs = problem.network.model.gangCount() + 1;
    const auto passives = static_cast<Weight>(problem.network.model.passives().size()) + 1;
    const bool isDivisible = double(gangs) * double(gangs) * double(passives) * double(divisible) < most;
    WayGraph::Weights weights = {0, 0, isDivisible ? divisible : 1};
    weights.away = weights.passive * passives;
    if (problem.request.aim == PlanAim::FewestChanges)
        weights.change = weights.away * gangs;
    return weights;
}

std::vector<std::pair<int, int>> arcsBy(int WayGraph::Arc::*end, const std::vector<WayGraph::Arc> &arcs)
{
    std::vector<std::pair<int, int>> entries;
    for (std::size_t i = 0; i < arcs.size(); ++i)
        entries.emplace_back(arcs[i].*end, static_cast<int>(i));
    return entries;
}
}

WayGraph::WayGraph(const PlanProblem &planProblem)
    : problem(planProblem)
    , weightsOfAll(weightsIn(planProblem))
    , count(planProblem.network.model.netCount() + static_cast<int>(planProblem.network.model.passives().size()))
    , useful(usefulLinks())
    , allArcs(allUsefulArcs())
    , outgoing(count, arcsBy(&Arc::from, allArcs))
    , incoming(count, arcsBy(&Arc::to, allArcs))
{
}

WayGraph::Weight WayGraph::weightOf(int gang, int position) const
{
    return (position == 0 ? 0 : weightsOfAll.away) +
           (position == problem.before[placeOf(gang)] ? 0 : weightsOfAll.change);
}

// Not those that end at a net from which nothing else leads on and that nobody asked for.
std::vector<bool> WayGraph::usefulLinks() const
{
    const SwitchNetwork &network = problem.network;
    const int netCount = network.model.netCount();
    std::vector<bool> isUseful(network.links.size());
    std::vector<int> waysOn(placeOf(netCount));
    for (std::size_t i = 0; i < isUseful.size(); ++i) {
        const SwitchLink &link = network.links[i];
        isUseful[i] = problem.isPossible(link) && !problem.isBarred(link.net) && !problem.isBarred(link.otherNet);
        waysOn[placeOf(link.net)] += isUseful[i];
        waysOn[placeOf(link.otherNet)] += isUseful[i];
    }
    std::vector<int> ends;
    const auto addIfEnd = [&](int net) {
        if (waysOn[placeOf(net)] == 1 && problem.ownerOf(net) == PlanProblem::none)
            ends.push_back(net);
    };
    for (int net = 0; net < netCount; ++net) {
        for (const int passive : network.passivesOfNet.of(net))
            waysOn[placeOf(net)] += problem.mayGoThrough(passive);
        addIfEnd(net);
    }
    while (!ends.empty()) {
        const int end = ends.back();
        ends.pop_back();
        for (const int i : network.linksOfNet.of(end)) {
            if (!isUseful[placeOf(i)])
                continue;
            isUseful[placeOf(i)] = false;
            const int next = network.links[placeOf(i)].otherEnd(end);
            --waysOn[placeOf(next)];
            addIfEnd(next);
        }
    }
    return isUseful;
}

/// By link, of the cheapest of its positions.
std::vector<WayGraph::Weight> WayGraph::sharedCosts() const
{
    const SwitchNetwork &network = problem.network;
    std::vector<Weight> costs(network.links.size(), std::numeric_limits<Weight>::max());
    for (int gang = 0; gang < network.model.gangCount(); ++gang) {
        const int usual = problem.usualPosition(gang);
        for (int position = 0; position < network.model.gang(gang).positionCount; ++position) {
            if (position != usual && !problem.mayMove(gang))
                continue;
            std::vector<int> sharers;
            for (const int i : network.linksOfGang.of(gang)) {
                if (isUseful(i) && problem.isClosed(network.links[placeOf(i)], position))
                    sharers.push_back(i);
            }
            const Weight cost = weightOf(gang, position) - weightOf(gang, usual);
            for (const int i : sharers)
                costs[placeOf(i)] = std::min(costs[placeOf(i)], cost / static_cast<Weight>(sharers.size()));
        }
    }
    return costs;
}

std::vector<WayGraph::Arc> WayGraph::allUsefulArcs() const
{
    const SwitchNetwork &network = problem.network;
    const auto costs = sharedCosts();
    std::vector<Arc> arcs;
    for (std::size_t i = 0; i < useful.size(); ++i) {
        if (!useful[i])
            continue;
        const SwitchLink &link = network.links[i];
        arcs.push_back({link.net, link.otherNet, static_cast<int>(i), none, costs[i]});
        arcs.push_back({link.otherNet, link.net, static_cast<int>(i), none, costs[i]});
    }
    const auto &passives = network.model.passives();
    for (int passive = 0; passive < static_cast<int>(passives.size()); ++passive) {
        if (!problem.mayGoThrough(passive))
            continue;
        const int node = network.model.netCount() + passive;
        for (const int net : passives[placeOf(passive)].nets) {
            arcs.push_back({net, node, none, passive, weightsOfAll.passive});
            arcs.push_back({node, net, none, passive, 0});
        }
    }
    return arcs;
}
}
