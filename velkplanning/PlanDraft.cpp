#include <velkplanning/PlanDraft.h>

#include <velkplanning/Places.h>

#include <algorithm>

namespace Velk {

namespace {

DisjointSets closedSets(const PlanProblem &problem, const std::vector<int> &positions)
{
    DisjointSets sets(problem.network.model.netCount());
    for (const SwitchLink &link : problem.network.links) {
        if (problem.isClosed(link, positions[placeOf(link.gang)]))
            sets.unite(link.net, link.otherNet);
    }
    return sets;
}

void unitePassive(DisjointSets &sets, const PassiveComponent &passive)
{
    for (const int net : passive.nets)
        sets.unite(passive.nets.front(), net);
}
}

DraftState::DraftState(const PlanProblem &planProblem, const PlanDraft &planDraft)
    : problem(planProblem)
    , draft(planDraft)
    , connected(closedSets(planProblem, planDraft.positions))
    , extents(connected)
    , groupOfSet(placeOf(planProblem.network.model.netCount()), PlanProblem::none)
{
    for (const int passive : draft.through)
        unitePassive(extents, problem.network.model.passives()[placeOf(passive)]);
    for (int group = 0; group < problem.groupCount(); ++group) {
        for (const int net : problem.groups.at(group).nets)
            groupOfSet[placeOf(extents.leastOf(net))] = group;
    }
}

bool DraftState::isPlan()
{
    const ConnectionRequest &request = problem.request;
    return tiesGroups() && keepsApart() && (request.allowsSideConnections || strayPins().empty()) &&
           (request.trustsUnknown || (trustsKnownAlone() && doubtfulNets().empty())) &&
           (!request.forbidsCouplings || isUncoupled());
}

bool DraftState::tiesGroups()
{
    for (int group = 0; group < problem.groupCount(); ++group) {
        const auto &nets = problem.groups.at(group).nets;
        for (const int net : nets) {
            if (groupAt(net) != group || !extents.areUnited(net, nets.front()))
                return false;
        }
    }
    return true;
}

bool DraftState::keepsApart()
{
    for (int net = 0; net < problem.network.model.netCount(); ++net) {
        if (problem.isBarred(net) && groupAt(net) != PlanProblem::none)
            return false;
    }
    return true;
}

bool DraftState::trustsKnownAlone()
{
    for (const auto &nets : problem.network.netsOfUnknown) {
        int touched = PlanProblem::none;
        for (const int net : nets) {
            const int group = groupAt(net);
            if (group != PlanProblem::none && touched != PlanProblem::none && group != touched)
                return false;
            touched = group == PlanProblem::none ? touched : group;
        }
    }
    return true;
}

bool DraftState::isUncoupled()
{
    DisjointSets coupled = connected;
    for (const PassiveComponent &passive : problem.network.model.passives())
        unitePassive(coupled, passive);
    std::vector<int> groupOfCoupled(groupOfSet.size(), PlanProblem::none);
    for (int group = 0; group < problem.groupCount(); ++group) {
        int &known = groupOfCoupled[placeOf(coupled.leastOf(problem.groups.at(group).nets.front()))];
        if (known != PlanProblem::none)
            return false;
        known = group;
    }
    return true;
}

std::vector<int> DraftState::strayPins()
{
    std::vector<int> firstOfSet(groupOfSet.size(), PlanProblem::none);
    for (int net = 0; net < problem.network.model.netCount(); ++net) {
        if (!problem.isWatched(net) || groupAt(net) != PlanProblem::none)
            continue;
        int &first = firstOfSet[placeOf(setOf(net))];
        if (first == PlanProblem::none)
            first = net;
        const auto &rest = problem.network.restSets;
        if (rest[placeOf(first)] != rest[placeOf(net)])
            return {first, net};
    }
    return {};
}

std::vector<int> DraftState::doubtfulNets()
{
    std::vector<bool> isForbiddenSet(groupOfSet.size());
    for (int net = 0; net < problem.network.model.netCount(); ++net) {
        if (problem.isForbidden(net))
            isForbiddenSet[placeOf(setOf(net))] = true;
    }
    for (const auto &nets : problem.network.netsOfUnknown) {
        const auto reached =
            std::find_if(nets.cbegin(), nets.cend(), [this](int net) { return groupAt(net) != PlanProblem::none; });
        const auto doubtful =
            std::find_if(nets.cbegin(), nets.cend(), [&](int net) { return isForbiddenSet[placeOf(setOf(net))]; });
        if (reached != nets.cend() && doubtful != nets.cend())
            return {*reached, *doubtful};
    }
    return {};
}

std::vector<int> DraftState::neededPassives()
{
    std::vector<int> needed;
    for (const int passive : draft.through) {
        const auto &nets = problem.network.model.passives()[placeOf(passive)].nets;
        if (!nets.empty() && groupAt(nets.front()) != PlanProblem::none)
            needed.push_back(passive);
    }
    return needed;
}
}
