#include <velkplanning/WayCosts.h>

#include <velkplanning/DisjointWays.h>
#include <velkplanning/Places.h>

#include <algorithm>
#include <functional>
#include <map>
#include <numeric>
#include <queue>

namespace Velk {

WayCosts::WayCosts(const PlanProblem &planProblem)
    : problem(planProblem)
    , graph(planProblem)
{
    for (int gang = 0; gang < problem.network.model.gangCount(); ++gang)
        leastWeight += graph.weightOf(gang, problem.usualPosition(gang));
    const auto ends = endsBySide(problem);
    unpaid.assign(graph.arcs().size(), endless);
    for (int group = 0; group < problem.groupCount(); ++group)
        chargeGroup(group, ends[placeOf(group)]);
    chargeOpenings();
}

// One net after the other pays for the way to it, from the source on, what nobody before it has paid for. What is paid
// so is never more than the cheapest tree of ways costs: each arc is paid once, and by nets whose way has to cross the
// border between what is nearer to them and what is farther away.
void WayCosts::chargeGroup(int group, const GroupEnds &ends)
{
    std::vector<Weight> costs;
    for (const WayGraph::Arc &arc : graph.arcs())
        costs.push_back(arc.cost);
    std::vector<int> targets = problem.groups.at(group).nets;
    targets.erase(std::find(targets.cbegin(), targets.cend(), ends.source));
    Weight least = 0;
    for (const int target : targets) {
        const auto toTarget = distances(target, false, group, costs);
        const Weight way = toTarget[placeOf(ends.source)];
        payForWay(toTarget, way, costs);
        least = std::min(endless, least + way);
    }
    const auto fromSource = distances(ends.source, true, group, costs);
    for (const int target : targets)
        addFlow(group, {ends.source, target}, fromSource, costs);
    for (std::size_t arc = 0; arc < costs.size(); ++arc) {
        if (graph.mayEnter(group, graph.arcs()[arc].from) && graph.mayEnter(group, graph.arcs()[arc].to))
            unpaid[arc] = std::min(unpaid[arc], costs[arc]);
    }
    leastWeight = std::min(endless, leastWeight + least);
    leastOfGroups.push_back(least);
}

/// Takes from the costs of arcs what is paid.
void WayCosts::payForWay(const std::vector<Weight> &toTarget, Weight way, std::vector<Weight> &costs) const
{
    for (std::size_t arc = 0; arc < costs.size() && way < endless; ++arc) {
        const Weight before = std::min(way, toTarget[placeOf(graph.arcs()[arc].from)]);
        const Weight behind = std::min(way, toTarget[placeOf(graph.arcs()[arc].to)]);
        costs[arc] -= std::max(Weight(0), before - behind);
    }
}

void WayCosts::addFlow(int group, const GroupEnds &ends, const std::vector<Weight> &fromSource,
                       const std::vector<Weight> &costs)
{
    Flow flow{group, ends.source, ends.target, {}};
    const auto toTarget = distances(ends.target, false, group, costs);
    for (std::size_t i = 0; i < costs.size(); ++i) {
        const WayGraph::Arc &arc = graph.arcs()[i];
        const Weight further = fromSource[placeOf(arc.from)] + costs[i] + toTarget[placeOf(arc.to)];
        if (further < endless)
            flow.uses.push_back({static_cast<int>(i), further});
    }
    allFlows.push_back(std::move(flow));
}

// The cheapest ways from any source to any target that have no net in common, at what each arc costs the group for
// which it is cheapest, beyond what that group has paid for already.
void WayCosts::chargeCrowding()
{
    const int netCount = problem.network.model.netCount();
    DisjointWays ways(graph.nodeCount() + netCount);
    const auto wayOut = [&](int node) { return node < netCount ? graph.nodeCount() + node : node; };
    for (int net = 0; net < netCount; ++net)
        ways.addEdge(net, wayOut(net), 1);
    for (std::size_t arc = 0; arc < graph.arcs().size(); ++arc) {
        if (unpaid[arc] < endless)
            ways.addEdge(wayOut(graph.arcs()[arc].from), graph.arcs()[arc].to, 1, unpaid[arc]);
    }
    const int source = ways.addNode();
    const int target = ways.addNode();
    for (const GroupEnds &ends : endsBySide(problem)) {
        ways.addEdge(source, ends.source, 1);
        ways.addEdge(wayOut(ends.target), target, 1);
    }
    for (int group = 0; group < problem.groupCount(); ++group)
        ways.addWay(source, target);
    crowding = ways.cost();
}

// What is to be apart takes one contact less to be opened than there are parties, since each contact that opens makes
// one set into two at most.
void WayCosts::chargeOpenings()
{
    const SwitchNetwork &network = problem.network;
    const auto isClosed = [&](const SwitchLink &link) {
        return problem.isClosed(link, problem.usualPosition(link.gang));
    };
    DisjointSets sets(network.model.netCount());
    for (const SwitchLink &link : network.links) {
        if (isClosed(link))
            sets.unite(link.net, link.otherNet);
    }
    const auto parties = partiesOfSets(sets);
    std::map<int, std::vector<Weight>> openingCosts; // by set
    suspects.assign(placeOf(network.model.gangCount()), false);
    for (const SwitchLink &link : network.links) {
        const int set = sets.leastOf(link.net);
        if (!isClosed(link) || !problem.mayMove(link.gang) || parties[placeOf(set)].size() < 2)
            continue;
        suspects[placeOf(link.gang)] = true;
        openingCosts[set].push_back(openingCost(link.gang));
    }
    for (auto &[set, costs] : openingCosts) {
        std::sort(costs.begin(), costs.end());
        const std::size_t count = std::min(costs.size(), parties[placeOf(set)].size() - 1);
        leastWeight = std::min(
            endless, std::accumulate(costs.cbegin(), costs.cbegin() + static_cast<std::ptrdiff_t>(count), leastWeight));
    }
}

/// By the least net of each set: the groups with pins in it, and what is connected at rest and to be kept apart from
/// all else.
std::vector<std::set<int>> WayCosts::partiesOfSets(DisjointSets &sets) const
{
    const int netCount = problem.network.model.netCount();
    std::vector<std::set<int>> parties(placeOf(netCount));
    for (int net = 0; net < netCount; ++net) {
        auto &ofSet = parties[placeOf(sets.leastOf(net))];
        if (problem.ownerOf(net) != PlanProblem::none)
            ofSet.insert(netCount + problem.ownerOf(net));
        else if (problem.isForbidden(net))
            ofSet.insert(problem.network.restSets[placeOf(net)]);
    }
    return parties;
}

/// The share of one of the contacts that the gang opens when it leaves its usual position. None where that may close
/// others of use, since ways are charged for it then.
WayCosts::Weight WayCosts::openingCost(int gang) const
{
    const SwitchNetwork &network = problem.network;
    const int usual = problem.usualPosition(gang);
    const auto links = network.linksOfGang.of(gang);
    const auto isClosing = [&](int i) {
        const auto &positions = network.links[placeOf(i)].positions;
        return graph.isUseful(i) &&
               std::any_of(positions.cbegin(), positions.cend(), [&](int position) { return position != usual; });
    };
    if (std::any_of(links.begin(), links.end(), isClosing))
        return 0;
    Weight least = endless;
    for (int position = 0; position < network.model.gang(gang).positionCount; ++position) {
        if (position != usual)
            least = std::min(least, graph.weightOf(gang, position) - graph.weightOf(gang, usual));
    }
    return least / std::count_if(links.begin(), links.end(),
                                 [&](int i) { return problem.isClosed(network.links[placeOf(i)], usual); });
}

std::vector<WayCosts::Weight> WayCosts::distances(int node, bool isSource, int group,
                                                  const std::vector<Weight> &costs) const
{
    std::vector<Weight> result(placeOf(graph.nodeCount()), endless);
    using Entry = std::pair<Weight, int>;
    std::priority_queue<Entry, std::vector<Entry>, std::greater<>> next;
    const auto reach = [&](int reached, Weight distance) {
        if (!graph.mayEnter(group, reached) || result[placeOf(reached)] <= distance)
            return;
        result[placeOf(reached)] = distance;
        next.emplace(distance, reached);
    };
    reach(node, 0);
    while (!next.empty()) {
        const auto [distance, at] = next.top();
        next.pop();
        if (distance > result[placeOf(at)])
            continue;
        for (const int i : isSource ? graph.arcsFrom(at) : graph.arcsTo(at)) {
            const WayGraph::Arc &arc = graph.arcs()[placeOf(i)];
            reach(isSource ? arc.to : arc.from, distance + costs[placeOf(i)]);
        }
    }
    return result;
}

int WayCosts::brokenGroup() const
{
    const auto broken = std::find(leastOfGroups.cbegin(), leastOfGroups.cend(), Weight(endless));
    return broken == leastOfGroups.cend() ? PlanProblem::none : static_cast<int>(broken - leastOfGroups.cbegin());
}

// Rounded up: of less than one there is nothing.
PlanCost WayCosts::least() const
{
    const auto &[change, away, passive] = graph.weights();
    const SwitchingModel &model = problem.network.model;
    PlanCost cost = {};
    Weight rest = leastWeight + crowding;
    if (change > 0) {
        cost[ChangedGangs] = static_cast<int>(rest / change);
        rest %= change;
    }
    cost[GangsAway] = static_cast<int>(rest / away);
    rest %= away;
    cost[PassivesThrough] = static_cast<int>((rest + passive - 1) / passive);
    if (cost[PassivesThrough] > static_cast<int>(model.passives().size()))
        cost = {cost[ChangedGangs], cost[GangsAway] + 1, 0};
    if (change > 0 && cost[GangsAway] > model.gangCount())
        cost = {cost[ChangedGangs] + 1, 0, 0};
    return cost;
}

PlanCost WayCosts::costOf(int gang, int position) const
{
    const bool isChange = problem.request.aim == PlanAim::FewestChanges && position != problem.before[placeOf(gang)];
    return {isChange, position != 0, 0};
}

PlanCost WayCosts::costOf(const std::vector<int> &positions, int passivesThrough) const
{
    PlanCost cost = {0, 0, passivesThrough};
    for (int gang = 0; gang < problem.network.model.gangCount(); ++gang) {
        const PlanCost ofGang = costOf(gang, positions[placeOf(gang)]);
        cost[ChangedGangs] += ofGang[ChangedGangs];
        cost[GangsAway] += ofGang[GangsAway];
    }
    return cost;
}

WayCosts::Weight WayCosts::weightOf(const PlanCost &cost) const
{
    const auto &[change, away, passive] = graph.weights();
    const SwitchingModel &model = problem.network.model;
    return change * std::min(cost[ChangedGangs], model.gangCount()) +
           away * std::min(cost[GangsAway], model.gangCount()) +
           passive * std::min(cost[PassivesThrough], static_cast<int>(model.passives().size()));
}

std::vector<int> WayCosts::arcsWithin(const PlanCost &budget, const Flow &flow) const
{
    const Weight most = weightOf(budget);
    std::vector<int> arcs;
    for (const Use &use : flow.uses) {
        if (leastWeight + use.further <= most)
            arcs.push_back(use.arc);
    }
    return arcs;
}

bool WayCosts::leavesRoomForOthers(const PlanCost &budget) const
{
    const auto &[change, away, passive] = graph.weights();
    const Weight leastMove = change > 0 ? change - away : away;
    return leastWeight + crowding + leastMove <= weightOf(budget);
}
}
