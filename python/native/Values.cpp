#include "python/native/Values.h"

using namespace Velk;

namespace VelkPython {

namespace {

const char *textOf(VelkPositionsRule rule)
{
    switch (rule) {
    case VelkPositionsRule::Field:
        return "field";
    case VelkPositionsRule::Table:
        return "table";
    case VelkPositionsRule::ContactNumbers:
        return "contact numbers";
    case VelkPositionsRule::PinNames:
        return "pin names";
    case VelkPositionsRule::TwoPins:
        return "two pins";
    case VelkPositionsRule::NoContacts:
        return "no contacts";
    case VelkPositionsRule::Unknown:
        break;
    }
    return "unknown";
}

const char *textOf(VelkPlanResult result)
{
    switch (result) {
    case VelkPlanResult::Optimal:
        return "optimal";
    case VelkPlanResult::Feasible:
        return "feasible";
    case VelkPlanResult::Impossible:
        return "impossible";
    case VelkPlanResult::Unknown:
        break;
    }
    return "unknown";
}
}

Values::Values(const VelkSystem &describedSystem)
    : system(describedSystem)
    , types(py::module_::import("velk._values"))
    , frozenDict(types.attr("FrozenDict"))
    , pinType(types.attr("Pin"))
    , stepType(types.attr("Step"))
    , routeType(types.attr("Route"))
{
}

py::object Values::valueType(const char *name) const
{
    return types.attr(name);
}

py::object Values::of(VelkPositionsRule rule) const
{
    return py::str(textOf(rule));
}

py::object Values::of(const VelkComponentInfo &component)
{
    const auto known = componentsByRef.find(component.ref);
    if (known != componentsByRef.end())
        return known->second;
    const py::object value = make(valueType("Component"), of(component.ref), of(component.value), of(component.part),
                                  of(component.properties));
    return componentsByRef.emplace(component.ref, value).first->second;
}

py::object Values::component(const std::string &ref)
{
    const auto known = componentsByRef.find(ref);
    return known != componentsByRef.end() ? known->second : of(system.component(ref));
}

py::object Values::components(const std::vector<std::string> &refs)
{
    return tupleOf(refs, [this](const std::string &ref) { return component(ref); });
}

py::object Values::netName(const std::string &name)
{
    const auto known = netNames.find(name);
    if (known != netNames.end())
        return known->second;
    const py::object text = of(name);
    return netNames.emplace(name, text).first->second;
}

py::object Values::newPin(const std::string &ref, const VelkPinInfo &pin, const py::object &net) const
{
    return make(pinType, of(ref), of(pin.number), of(pin.name), net);
}

const std::vector<Values::PlacedPin> &Values::placedPins(const std::string &ref)
{
    const auto known = pinsByRef.find(ref);
    if (known != pinsByRef.end())
        return known->second;
    std::vector<PlacedPin> pins;
    try {
        for (const VelkPlacedPin &pin : system.pins(ref))
            pins.push_back({pin, newPin(ref, pin.pin, pin.net.empty() ? py::none() : netName(pin.net))});
    } catch (const VelkSystemException &) {
        // A net may hold pins of a component that its netlist does not list.
    }
    return pinsByRef.emplace(ref, std::move(pins)).first->second;
}

const Values::PlacedPin *Values::placedPin(const std::string &ref, const VelkPinInfo &pin)
{
    for (const PlacedPin &placed : placedPins(ref)) {
        if (placed.record.pin.number == pin.number && placed.record.pin.name == pin.name)
            return &placed;
    }
    return nullptr;
}

py::object Values::of(const VelkNodeInfo &pin)
{
    const PlacedPin *const placed = placedPin(pin.component, pin.pin);
    return placed != nullptr ? placed->pin : newPin(pin.component, pin.pin, py::none());
}

py::object Values::pinOnNet(const std::string &ref, const VelkPinInfo &pin, const std::string &net)
{
    const PlacedPin *const placed = placedPin(ref, pin);
    return placed != nullptr && placed->record.net == net ? placed->pin : newPin(ref, pin, netName(net));
}

py::object Values::pinsOf(const std::string &ref)
{
    return tupleOf(placedPins(system.component(ref).ref), [](const PlacedPin &placed) { return placed.pin; });
}

py::object Values::of(const VelkNetInfo &net)
{
    const py::object name = netName(net.name);
    return make(valueType("Net"), name,
                tupleOf(net.pins, [&](const VelkNodeInfo &pin) { return newPin(pin.component, pin.pin, name); }));
}

py::object Values::step(const VelkRouteStep &step, const py::object &pinOut)
{
    return make(stepType, netName(step.net), pinOnNet(step.component, step.pinIn, step.net), component(step.component),
                pinOut, of(step.position), of(step.positionName), of(step.isUnknown));
}

py::object Values::steps(const VelkRoute &route)
{
    return tupleOf(route.steps, [&](const VelkRouteStep &crossed) {
        const std::string &nextNet = &crossed == &route.steps.back() ? route.lastNet : (&crossed)[1].net;
        return step(crossed, pinOnNet(crossed.component, crossed.pinOut, nextNet));
    });
}

py::object Values::route(const py::object &start, const py::object &end, const VelkRoute &route)
{
    const auto sideConnection = [this](const VelkSideConnection &connection) {
        return pinOnNet(connection.component, connection.pin, connection.net);
    };
    return make(routeType, start, end, steps(route), netName(route.lastNet),
                tupleOf(route.sideConnections, sideConnection));
}

py::object Values::routes(const VelkNodeInfo &start, const VelkNodeInfo &end, const std::vector<VelkRoute> &routes)
{
    const py::object startPin = of(start);
    const py::object endPin = of(end);
    return tupleOf(routes, [&](const VelkRoute &found) { return route(startPin, endPin, found); });
}

py::object Values::reason(const VelkNodeInfo &start, const VelkNodeInfo &end, const VelkNoRouteReason &reason)
{
    const auto conflictStep = [this](const VelkRouteStep &crossed) {
        return step(crossed, of(VelkNodeInfo{crossed.component, crossed.pinOut}));
    };
    py::object conflict = py::none();
    if (reason.conflict) {
        conflict = make(valueType("PositionConflict"), route(of(start), of(end), reason.conflict->route),
                        tupleOf(reason.conflict->steps, conflictStep));
    }
    return make(valueType("NoRouteReason"), of(reason.isConnected), of(reason.shortest), of(reason.sufficientLimits),
                of(reason.fromSource), of(reason.fromDut), of(reason.between), of(reason.isConnectedInOtherDirection),
                of(reason.isRealizable), conflict, of(reason.excludedComponents), of(reason.excludedNets),
                of(reason.isConnectedOverOthers));
}

py::object Values::of(const VelkCoverage &coverage)
{
    const py::tuple sources = of(coverage.sources);
    const py::tuple duts = of(coverage.duts);
    const auto lostPair = [&](const std::pair<std::size_t, std::size_t> &pair) {
        return py::make_tuple(sources[pair.first], duts[pair.second]);
    };
    const auto criticalComponent = [&](const VelkCriticalComponent &critical) {
        return make(valueType("CriticalComponent"), component(critical.component), tupleOf(critical.lost, lostPair));
    };
    return make(valueType("Coverage"), sources, duts, of(coverage.switches),
                tupleOf(coverage.critical, criticalComponent));
}

py::object Values::plan(const std::vector<std::pair<VelkNodeInfo, VelkNodeInfo>> &ends, const VelkPlannedStep &step)
{
    const VelkPlan &plan = step.plan;
    const auto way = [&](const VelkPlannedWay &planned) {
        const auto &[start, end] = ends[static_cast<std::size_t>(&planned - plan.ways.data())];
        return route(of(start), of(end), {planned.steps, planned.lastNet, {}});
    };
    return make(valueType("Plan"), of(step.name), py::str(textOf(plan.result)), of(plan.positions),
                of(plan.positionNames), components(step.toRest), components(step.toSet), tupleOf(plan.ways, way),
                of(plan.groups), of(plan.couplings), of(plan.alsoConnected), of(plan.unknown), of(step.transients),
                of(plan.conflict), of(plan.bottleneck));
}
}
