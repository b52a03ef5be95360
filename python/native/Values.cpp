#include "python/native/Values.h"

#include <algorithm>
#include <numeric>
#include <utility>

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
        return "pin numbers";
    case VelkPositionsRule::PinNames:
        return "pin names";
    case VelkPositionsRule::TwoPins:
        return "two pins";
    case VelkPositionsRule::NoContacts:
        return "coil only";
    case VelkPositionsRule::Unknown:
        break;
    }
    return "unknown";
}

/// The net that a route comes to by the step.
const std::string &netAfter(const VelkRoute &route, std::vector<VelkRouteStep>::const_iterator step)
{
    return step + 1 == route.steps.end() ? route.lastNet : (step + 1)->net;
}

/// The step of a route that a conflict tells the position of.
std::vector<VelkRouteStep>::const_iterator stepOf(const VelkRoute &route, const VelkRouteStep &told)
{
    return std::find_if(route.steps.begin(), route.steps.end(), [&](const VelkRouteStep &step) {
        return step.net == told.net && step.component == told.component && step.pinIn == told.pinIn &&
               step.pinOut == told.pinOut;
    });
}

constexpr std::size_t fewPins = 8; // which are looked through more quickly than their order

/// Between parts of what takes long. Raises in Python what Ctrl-C is to raise.
void letOthersRun()
{
    {
        const py::gil_scoped_release released;
    }
    if (PyErr_CheckSignals() != 0)
        throw py::error_already_set();
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
    , pinType(typeOf<VelkNodeInfo>())
    , stepType(typeOf<VelkRouteStep>())
    , routeType(typeOf<VelkRoute>())
{
}

py::object Values::of(VelkPositionsRule rule) const
{
    return py::str(textOf(rule));
}

void Values::KnownComponent::setPins(std::vector<PlacedPin> &&placed)
{
    pins = std::move(placed);
    pinsByNumber.resize(pins.size());
    std::iota(pinsByNumber.begin(), pinsByNumber.end(), std::size_t(0));
    std::stable_sort(pinsByNumber.begin(), pinsByNumber.end(),
                     [this](std::size_t a, std::size_t b) { return pins[a].number < pins[b].number; });
    hasPins = true;
}

const Values::PlacedPin *Values::KnownComponent::find(const VelkPinInfo &pin) const
{
    const auto isMeant = [&pin](const PlacedPin &placed) {
        return placed.number == pin.number && placed.name == pin.name;
    };
    if (pins.size() <= fewPins) {
        const auto placed = std::find_if(pins.begin(), pins.end(), isMeant);
        return placed == pins.end() ? nullptr : &*placed;
    }
    const auto isBefore = [this](std::size_t place, const std::string &number) { return pins[place].number < number; };
    auto place = std::lower_bound(pinsByNumber.begin(), pinsByNumber.end(), pin.number, isBefore);
    while (place != pinsByNumber.end() && pins[*place].number == pin.number && !isMeant(pins[*place]))
        ++place;
    return place != pinsByNumber.end() && isMeant(pins[*place]) ? &pins[*place] : nullptr;
}

const Values::KnownComponent &Values::known(const std::string &ref)
{
    const auto place = knownComponents.find(ref);
    if (place != knownComponents.end() && place->second.hasPins)
        return place->second;
    py::object component;
    std::vector<PlacedPin> pins;
    try {
        component = of(system.component(ref));
        for (const VelkPlacedPin &pin : system.pins(ref)) {
            const py::object net = pin.net.empty() ? py::none() : netName(pin.net);
            pins.push_back({pin.pin.number, pin.pin.name, pin.net, newPin(ref, pin.pin, net), net});
        }
    } catch (const VelkSystemException &) {
        // A net may hold pins of a component that its netlist does not list.
    }
    // Making them may let another thread run, which may make the same.
    KnownComponent &made = knownComponents.try_emplace(ref, KnownComponent{component}).first->second;
    if (!made.hasPins)
        made.setPins(std::move(pins));
    return made;
}

py::object Values::of(const VelkComponentInfo &component)
{
    const auto place = knownComponents.find(component.ref);
    if (place != knownComponents.end())
        return place->second.component;
    const py::object value = make(typeOf<VelkComponentInfo>(), of(component.ref), of(component.value),
                                  of(component.part), of(component.properties));
    return knownComponents.emplace(component.ref, KnownComponent{value}).first->second.component;
}

py::object Values::components(const std::vector<std::string> &refs)
{
    return tupleOf(refs, [this](const std::string &ref) { return known(ref).component; });
}

py::object Values::netName(const std::string &name)
{
    const auto place = netNames.find(name);
    return place != netNames.end() ? place->second : netNames.emplace(name, of(name)).first->second;
}

py::object Values::newPin(const std::string &ref, const VelkPinInfo &pin, const py::object &net) const
{
    return make(pinType, of(ref), of(pin.number), of(pin.name), net);
}

py::object Values::of(const VelkNodeInfo &pin)
{
    const PlacedPin *const placed = known(pin.component).find(pin.pin);
    return placed != nullptr ? placed->pin : newPin(pin.component, pin.pin, py::none());
}

Values::MetPin Values::metPin(const std::string &ref, const KnownComponent &component, const VelkPinInfo &pin,
                              const std::string &net)
{
    const PlacedPin *const placed = component.find(pin);
    if (placed != nullptr && placed->net == net)
        return {placed->pin, placed->netName};
    const py::object name = netName(net);
    return {newPin(ref, pin, name), name};
}

py::object Values::pinsOf(const std::string &ref)
{
    return tupleOf(known(system.component(ref).ref).pins, [](const PlacedPin &placed) { return placed.pin; });
}

py::object Values::of(const VelkNetInfo &net)
{
    const py::object name = netName(net.name);
    return make(typeOf<VelkNetInfo>(), name,
                tupleOf(net.pins, [&](const VelkNodeInfo &pin) { return newPin(pin.component, pin.pin, name); }));
}

py::object Values::step(const VelkRouteStep &step, const std::string &nextNet)
{
    const KnownComponent &crossed = known(step.component);
    const auto [pinIn, net] = metPin(step.component, crossed, step.pinIn, step.net);
    const auto [pinOut, next] = metPin(step.component, crossed, step.pinOut, nextNet);
    return make(stepType, net, pinIn, crossed.component, pinOut, of(step.position), of(step.positionName),
                of(step.isUnknown));
}

py::tuple Values::steps(const VelkRoute &route, const MadeSteps &before)
{
    auto place = route.steps.begin();
    return tupleOf(route.steps, [&](const VelkRouteStep &crossed) -> py::object {
        const std::string &nextNet = netAfter(route, place);
        const auto number = static_cast<std::size_t>(place++ - route.steps.begin());
        if (before.route != nullptr && number < before.route->steps.size()) {
            const auto placeBefore = before.route->steps.begin() + static_cast<std::ptrdiff_t>(number);
            if (*placeBefore == crossed && netAfter(*before.route, placeBefore) == nextNet)
                return before.steps[number];
        }
        return step(crossed, nextNet);
    });
}

py::object Values::route(const py::object &start, const py::object &end, const VelkRoute &route, const py::tuple &steps)
{
    const auto sideConnection = [this](const VelkSideConnection &connection) {
        return metPin(connection.component, known(connection.component), connection.pin, connection.net).pin;
    };
    return make(routeType, start, end, steps, netName(route.lastNet), tupleOf(route.sideConnections, sideConnection));
}

py::object Values::routes(const VelkNodeInfo &start, const VelkNodeInfo &end, const std::vector<VelkRoute> &routes)
{
    constexpr std::size_t routesBetween = 1000; // takes a few milliseconds
    const py::object startPin = of(start);
    const py::object endPin = of(end);
    std::size_t made = 0;
    MadeSteps before;
    return tupleOf(routes, [&](const VelkRoute &found) {
        if (++made % routesBetween == 0)
            letOthersRun();
        before = {&found, steps(found, before)};
        return route(startPin, endPin, found, before.steps);
    });
}

py::object Values::reason(const VelkNodeInfo &start, const VelkNodeInfo &end, const VelkNoRouteReason &reason)
{
    py::object conflict = py::none();
    if (reason.conflict) {
        const VelkRoute &way = reason.conflict->route;
        const auto stepAgainst = [&](const VelkRouteStep &told) {
            return step(told, netAfter(way, stepOf(way, told)));
        };
        conflict = make(typeOf<VelkPositionConflict>(), route(of(start), of(end), way, steps(way, MadeSteps())),
                        tupleOf(reason.conflict->steps, stepAgainst));
    }
    return make(typeOf<VelkNoRouteReason>(), of(reason.isConnected), of(reason.shortest), of(reason.sufficientLimits),
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
        return make(typeOf<VelkCriticalComponent>(), known(critical.component).component,
                    tupleOf(critical.lost, lostPair));
    };
    return make(typeOf<VelkCoverage>(), sources, duts, of(coverage.switches),
                tupleOf(coverage.critical, criticalComponent));
}

std::map<std::string, std::string> Values::restNames(const std::vector<std::string> &relays) const
{
    std::map<std::string, std::string> names;
    for (const std::string &relay : relays) {
        const std::string name = system.positions(relay).positions.front().name;
        if (!name.empty())
            names.emplace(relay, name);
    }
    return names;
}

py::object Values::plan(const std::vector<std::pair<VelkNodeInfo, VelkNodeInfo>> &ends, const VelkPlannedStep &step)
{
    const VelkPlan &plan = step.plan;
    const auto way = [&](const VelkPlannedWay &planned) {
        const auto &[start, end] = ends[static_cast<std::size_t>(&planned - plan.ways.data())];
        const VelkRoute wayOfConnection{planned.steps, planned.lastNet, {}};
        return route(of(start), of(end), wayOfConnection, steps(wayOfConnection, MadeSteps()));
    };
    return make(typeOf<VelkPlannedStep>(), of(step.name), py::str(textOf(plan.result)), of(plan.positions),
                of(plan.positionNames), components(step.toRest), components(step.toSet), tupleOf(plan.ways, way),
                of(plan.groups), of(plan.couplings), of(plan.alsoConnected), of(plan.unknown), of(step.transients),
                of(plan.conflict), of(plan.bottleneck), of(restNames(step.toRest)));
}
}
