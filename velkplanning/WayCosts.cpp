#include <velkplanning/WayCosts.h>

#include <algorithm>
#include <numeric>
#include <queue>

namespace Velk {

namespace {

std::size_t placeIn(int number)
{
    return static_cast<std::size_t>(number);
}
}

WayCosts::WayCosts(const PlanProblem &planProblem)
    : problem(planProblem)
{
    // So that costs can be shared by up to eight without rest.
    constexpr Weight divisible = 840;
    const SwitchingModel &model = problem.network.model;
    weights[PassivesThrough] = divisible;
    weights[GangsAway] = weights[PassivesThrough] * static_cast<Weight>(model.passives().size() + 1);
    weights[ChangedGangs] =
        problem.request.aim == PlanAim::FewestChanges ? weights[GangsAway] * (model.gangCount() + 1) : 0;
    for (int gang = 0; gang < model.gangCount(); ++gang)
        usualWeight += weightOf(gang, problem.usualPosition(gang));
    findUsefulLinks();
    shareCosts();
    findFlows();
}

PlanCost WayCosts::costOf(int gang, int position) const
{
    const bool isChange = problem.request.aim == PlanAim::FewestChanges && position != problem.before[placeIn(gang)];
    return {isChange, position != 0, 0};
}

PlanCost WayCosts::costOf(const std::vector<int> &positions, int passivesThrough) const
{
    PlanCost cost = {0, 0, passivesThrough};
    for (int gang = 0; gang < problem.network.model.gangCount(); ++gang) {
        const PlanCost ofGang = costOf(gang, positions[placeIn(gang)]);
        cost[ChangedGangs] += ofGang[ChangedGangs];
        cost[GangsAway] += ofGang[GangsAway];
    }
    return cost;
}

WayCosts::Weight WayCosts::weightOf(const PlanCost &cost) const
{
    const SwitchingModel &model = problem.network.model;
    const PlanCost most = {model.gangCount(), model.gangCount(), static_cast<int>(model.passives().size())};
    Weight weight = 0;
    for (std::size_t level = 0; level < cost.size(); ++level)
        weight += weights[level] * std::min(cost[level], most[level]);
    return weight;
}

WayCosts::Weight WayCosts::weightOf(int gang, int position) const
{
    return (position == 0 ? 0 : weights[GangsAway]) +
           (position == problem.before[placeIn(gang)] ? 0 : weights[ChangedGangs]);
}

// Not those that end at a net from which nothing else leads on and that nobody asked for.
void WayCosts::findUsefulLinks()
{
    const SwitchNetwork &network = problem.network;
    const int netCount = network.model.netCount();
    std::vector<int> waysOn(placeIn(netCount));
    useful.resize(network.links.size());
    for (std::size_t i = 0; i < useful.size(); ++i) {
        const SwitchLink &link = network.links[i];
        useful[i] = problem.isPossible(link) && !problem.isBarred(link.net) && !problem.isBarred(link.otherNet);
        if (useful[i]) {
            ++waysOn[placeIn(link.net)];
            ++waysOn[placeIn(link.otherNet)];
        }
    }
    for (int net = 0; net < netCount; ++net) {
        for (const int passive : network.passivesOfNet.of(net))
            waysOn[placeIn(net)] += problem.mayGoThrough(passive);
    }
    std::vector<int> ends;
    const auto isEnd = [&](int net) { return waysOn[placeIn(net)] == 1 && problem.ownerOf(net) == PlanProblem::none; };
    for (int net = 0; net < netCount; ++net) {
        if (isEnd(net))
            ends.push_back(net);
    }
    while (!ends.empty()) {
        const int end = ends.back();
        ends.pop_back();
        for (const int i : network.linksOfNet.of(end)) {
            if (!useful[placeIn(i)])
                continue;
            useful[placeIn(i)] = false;
            const int next = network.links[placeIn(i)].net + network.links[placeIn(i)].otherNet - end;
            --waysOn[placeIn(next)];
            if (isEnd(next))
                ends.push_back(next);
        }
    }
}

void WayCosts::shareCosts()
{
    const SwitchNetwork &network = problem.network;
    linkCosts.assign(network.links.size(), endless);
    for (int gang = 0; gang < network.model.gangCount(); ++gang) {
        const int usual = problem.usualPosition(gang);
        for (int position = 0; position < network.model.gang(gang).positionCount; ++position) {
            if (position != usual && !problem.mayMove(gang))
                continue;
            int sharers = 0;
            for (const int i : network.linksOfGang.of(gang))
                sharers += useful[placeIn(i)] && problem.isClosed(network.links[placeIn(i)], position);
            const Weight cost = weightOf(gang, position) - weightOf(gang, usual);
            for (const int i : network.linksOfGang.of(gang)) {
                if (useful[placeIn(i)] && problem.isClosed(network.links[placeIn(i)], position))
                    linkCosts[placeIn(i)] = std::min(linkCosts[placeIn(i)], cost / sharers);
            }
        }
    }
}

void WayCosts::findFlows()
{
    leastWeight = usualWeight;
    for (int group = 0; group < problem.groupCount(); ++group) {
        const auto &nets = problem.groups.at(group).nets;
        Weight least = 0;
        const auto fromSource = nets.size() > 1 ? distancesFrom(nets.front(), group) : std::vector<Weight>();
        for (std::size_t i = 1; i < nets.size(); ++i) {
            allFlows.push_back({group, nets.front(), nets[i], fromSource, distancesFrom(nets[i], group)});
            least = std::max(least, fromSource[placeIn(nets[i])]);
        }
        leastOfGroups.push_back(least);
        leastWeight = std::min(endless, leastWeight + least);
    }
}

std::vector<WayCosts::Weight> WayCosts::distancesFrom(int net, int group) const
{
    const SwitchNetwork &network = problem.network;
    std::vector<Weight> distances(placeIn(network.model.netCount()), endless);
    std::vector<bool> isPassed(network.model.passives().size());
    using Entry = std::pair<Weight, int>;
    std::priority_queue<Entry, std::vector<Entry>, std::greater<>> next;
    const auto reach = [&](int reached, Weight distance) {
        if (!problem.mayReach(group, reached) || distances[placeIn(reached)] <= distance)
            return;
        distances[placeIn(reached)] = distance;
        next.emplace(distance, reached);
    };
    reach(net, 0);
    while (!next.empty()) {
        const auto [distance, from] = next.top();
        next.pop();
        if (distance > distances[placeIn(from)])
            continue;
        for (const int i : network.linksOfNet.of(from)) {
            const SwitchLink &link = network.links[placeIn(i)];
            if (useful[placeIn(i)])
                reach(link.net + link.otherNet - from, distance + linkCosts[placeIn(i)]);
        }
        for (const int passive : network.passivesOfNet.of(from)) {
            if (!problem.mayGoThrough(passive) || isPassed[placeIn(passive)])
                continue;
            isPassed[placeIn(passive)] = true;
            for (const int to : network.model.passives()[placeIn(passive)].nets)
                reach(to, distance + weights[PassivesThrough]);
        }
    }
    return distances;
}

int WayCosts::brokenGroup() const
{
    const auto broken =
        std::find_if(leastOfGroups.cbegin(), leastOfGroups.cend(), [](Weight least) { return least >= endless; });
    return broken == leastOfGroups.cend() ? PlanProblem::none : static_cast<int>(broken - leastOfGroups.cbegin());
}

PlanCost WayCosts::least() const
{
    const auto passiveCount = static_cast<Weight>(problem.network.model.passives().size());
    PlanCost cost = {};
    Weight rest = leastWeight;
    if (weights[ChangedGangs] > 0) {
        cost[ChangedGangs] = static_cast<int>(rest / weights[ChangedGangs]);
        rest %= weights[ChangedGangs];
    }
    cost[GangsAway] = static_cast<int>(rest / weights[GangsAway]);
    rest %= weights[GangsAway];
    if (rest > passiveCount * weights[PassivesThrough]) { // more than passives could make up for
        ++cost[GangsAway];
        rest = 0;
    }
    cost[PassivesThrough] = static_cast<int>((rest + weights[PassivesThrough] - 1) / weights[PassivesThrough]);
    if (weights[ChangedGangs] > 0 && cost[GangsAway] > problem.network.model.gangCount())
        cost = {cost[ChangedGangs] + 1, 0, 0};
    return cost;
}

bool WayCosts::fits(const Flow &flow, int from, Weight step, int to, const PlanCost &budget) const
{
    const Weight way = flow.fromSource[placeIn(from)] + step + flow.toTarget[placeIn(to)];
    if (way >= endless)
        return false;
    return leastWeight - leastOfGroups[placeIn(flow.group)] + way <= weightOf(budget);
}

bool WayCosts::mayCrossLink(const Flow &flow, int link, int from, int to, const PlanCost &budget) const
{
    return useful[placeIn(link)] && fits(flow, from, linkCosts[placeIn(link)], to, budget);
}

bool WayCosts::mayCrossPassive(const Flow &flow, int from, int to, const PlanCost &budget) const
{
    return fits(flow, from, weights[PassivesThrough], to, budget);
}

bool WayCosts::leavesRoomForOthers(const PlanCost &budget) const
{
    const Weight leastMove =
        weights[ChangedGangs] > 0 ? weights[ChangedGangs] - weights[GangsAway] : weights[GangsAway];
    return leastWeight + leastMove <= weightOf(budget);
}
}
