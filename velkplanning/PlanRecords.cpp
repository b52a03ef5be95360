#include <velkplanning/PlanRecords.h>

#include <velk/facade/StandardTypes.h>

namespace Velk {

namespace {

VelkPlanResult toStandard(PlanResult result)
{
    switch (result) {
    case PlanResult::Optimal:
        return VelkPlanResult::Optimal;
    case PlanResult::Feasible:
        return VelkPlanResult::Feasible;
    case PlanResult::Impossible:
        return VelkPlanResult::Impossible;
    case PlanResult::Unknown:
        break;
    }
    return VelkPlanResult::Unknown;
}
}

PlanRecords::PlanRecords(const SystemModel &planned)
    : system(planned)
    , model(planned.model())
{
}

VelkPlan PlanRecords::planOf(const PlannedStep &step) const
{
    const ConnectionPlan &plan = step.plan;
    VelkPlan result{toStandard(plan.result), {}, {}, {}, {}, {}, {}, {}, {}, {}};
    for (std::size_t gang = 0; gang < plan.positions.size(); ++gang)
        addPositions(static_cast<int>(gang), plan.positions[gang], result);
    for (const ConnectionWay &way : step.ways)
        result.ways.push_back(of(way, plan.positions));
    for (const PlannedGroup &group : plan.groups)
        result.groups.push_back(of(group));
    for (const PlannedCoupling &coupling : plan.couplings)
        result.couplings.push_back(of(coupling));
    for (const auto &pins : plan.alsoConnected)
        result.alsoConnected.push_back(of(pins));
    result.unknown = components(plan.unknown);
    result.conflict.assign(plan.conflict.begin(), plan.conflict.end());
    result.bottleneck = netNames(plan.bottleneck);
    return result;
}

VelkPlannedStep PlanRecords::stepOf(const std::string &name, const PlannedStep &step) const
{
    VelkPlannedStep result{name, planOf(step), relaysOf(step.change.toRest), relaysOf(step.change.toSet), {}};
    for (const Transient &transient : step.change.transients)
        result.transients.push_back(of(transient));
    return result;
}

void PlanRecords::addPositions(int gang, int position, VelkPlan &plan) const
{
    if (position == 0)
        return;
    for (const QString &ref : model.gang(gang).components) {
        const std::string name = positionName(model.componentOf(ref), position);
        plan.positions.emplace(ref.toStdString(), position);
        if (!name.empty())
            plan.positionNames.emplace(ref.toStdString(), name);
    }
}

VelkPlannedWay PlanRecords::of(const ConnectionWay &way, const std::vector<int> &positions) const
{
    VelkPlannedWay result{{}, netName(way.lastNet)};
    for (const WayStep &step : way.steps)
        result.steps.push_back(of(step, positions));
    return result;
}

VelkRouteStep PlanRecords::of(const WayStep &step, const std::vector<int> &positions) const
{
    const VelkNodeInfo in = system.record(model.ref(step.component), step.pinIn);
    const VelkNodeInfo out = system.record(model.ref(step.component), step.pinOut);
    VelkRouteStep result{netName(step.net), in.pin, in.component, out.pin};
    const int gang = model.gangOf(step.component);
    if (gang != SwitchingModel::none) {
        result.position = positions[static_cast<std::size_t>(gang)];
        result.positionName = positionName(step.component, *result.position);
    }
    return result;
}

VelkPlannedGroup PlanRecords::of(const PlannedGroup &group) const
{
    return {{group.connections.begin(), group.connections.end()},
            of(group.pins),
            passives(group.through),
            netNames(group.nets),
            of(group.sideConnections)};
}

VelkPlannedCoupling PlanRecords::of(const PlannedCoupling &coupling) const
{
    return {{coupling.groups.begin(), coupling.groups.end()}, of(coupling.pins), passives(coupling.passives)};
}

std::vector<std::string> PlanRecords::relaysOf(const std::vector<int> &gangs) const
{
    QStringList refs;
    for (const int gang : gangs)
        refs += model.gang(gang).components;
    refs.sort();
    return toStandard(refs);
}

VelkTransient PlanRecords::of(const Transient &transient) const
{
    VelkTransient result{transient.isOnTheWayToRest, of(transient.pins), {}};
    for (const int gang : transient.gangs)
        result.gangs.push_back(toStandard(model.gang(gang).components));
    return result;
}

std::vector<VelkNodeInfo> PlanRecords::of(const QList<InterfacePin> &pins) const
{
    std::vector<VelkNodeInfo> result;
    for (const InterfacePin &pin : pins)
        result.push_back(system.record(pin.ref, pin.number));
    return result;
}

std::string PlanRecords::positionName(int component, int position) const
{
    return model.positions(component).positions.at(position).name.toStdString();
}

std::string PlanRecords::netName(int net) const
{
    return model.netNames(net).value(0).toStdString();
}

std::vector<std::string> PlanRecords::netNames(const std::vector<int> &nets) const
{
    QStringList names;
    for (const int net : nets)
        names += model.netNames(net);
    names.sort();
    return toStandard(names);
}

std::vector<std::string> PlanRecords::passives(const std::vector<int> &numbers) const
{
    QStringList refs;
    for (const int number : numbers)
        refs.append(model.passives()[static_cast<std::size_t>(number)].ref);
    return toStandard(refs);
}

std::vector<std::string> PlanRecords::components(const std::vector<int> &numbers) const
{
    QStringList refs;
    for (const int number : numbers)
        refs.append(model.ref(number));
    return toStandard(refs);
}
}
