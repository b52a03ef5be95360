#include <velkplanning/PlanProblem.h>

#include <velkplanning/Places.h>

#include <algorithm>

namespace Velk {

PlanProblem::PlanProblem(const SwitchNetwork &switchNetwork, const ConnectionRequest &wanted,
                         const std::vector<int> &positionsBefore)
    : network(switchNetwork)
    , request(wanted)
    , before(positionsBefore)
    , groups(groupsOf(wanted.connections, switchNetwork.model.netCount()))
{
    markNets();
    markGangs();
    markPassives();
}

void PlanProblem::markNets()
{
    const SwitchingModel &model = network.model;
    const auto count = placeOf(model.netCount());
    owners.assign(count, none);
    barred.assign(count, false);
    watched.assign(count, false);
    forbidden.assign(count, false);
    for (int group = 0; group < groupCount(); ++group) {
        for (const int net : groups.at(group).nets)
            owners[placeOf(net)] = group;
    }
    std::vector<bool> isAllowed(placeOf(model.componentCount()), request.allowsSideConnections);
    for (const int component : request.allowedComponents)
        isAllowed[placeOf(component)] = true;
    for (const InterfacePin &pin : model.interfacePins()) {
        const auto net = placeOf(pin.net);
        if (owners[net] != none)
            continue;
        watched[net] = true;
        if (!isAllowed[placeOf(model.componentOf(pin.ref))])
            forbidden[net] = true;
    }
    barred = forbidden;
    for (const int net : request.excludedNets)
        barred[placeOf(net)] = barred[placeOf(net)] || owners[placeOf(net)] == none;
}

void PlanProblem::markGangs()
{
    const SwitchingModel &model = network.model;
    const bool isAsBefore = request.aim == PlanAim::FewestChanges;
    movable.assign(placeOf(model.gangCount()), true);
    usual = isAsBefore ? before : std::vector<int>(placeOf(model.gangCount()), 0);
    for (int gang = 0; gang < model.gangCount(); ++gang)
        movable[placeOf(gang)] = model.gang(gang).positionCount > 1;
    for (const int component : request.excludedComponents) {
        const int gang = model.gangOf(component);
        if (gang == SwitchingModel::none)
            continue;
        movable[placeOf(gang)] = false;
        usual[placeOf(gang)] = 0;
    }
}

void PlanProblem::markPassives()
{
    const SwitchingModel &model = network.model;
    std::vector<bool> isExcludedComponent(placeOf(model.componentCount()));
    for (const int component : request.excludedComponents)
        isExcludedComponent[placeOf(component)] = true;
    for (const PassiveComponent &passive : model.passives())
        excludedPassives.push_back(isExcludedComponent[placeOf(model.componentOf(passive.ref))]);
}

bool PlanProblem::isClosed(const SwitchLink &link, int position) const
{
    return std::find(link.positions.cbegin(), link.positions.cend(), position) != link.positions.cend();
}

bool PlanProblem::isPossible(const SwitchLink &link) const
{
    return mayMove(link.gang) || isClosed(link, usualPosition(link.gang));
}
}
