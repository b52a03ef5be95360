#include "python/native/System.h"

#include "python/native/CallOff.h"

#include <utility>

using namespace Velk;

namespace VelkPython {

namespace {

using Ends = std::vector<std::pair<VelkNodeInfo, VelkNodeInfo>>;

/// Is found more quickly than by properties.
VelkRouteEnd endAt(const VelkNodeInfo &pin)
{
    return {{}, pin.pin.number, pin.component};
}

Ends endsOf(const VelkSystem &system, const std::vector<VelkConnection> &connections)
{
    Ends ends;
    ends.reserve(connections.size());
    for (const auto &[from, to] : connections)
        ends.emplace_back(system.pin(from), system.pin(to));
    return ends;
}
}

System::System(const VelkSystem &opened)
    : system(opened)
    , values(std::make_shared<Values>(opened))
    , lazyPlanner(std::make_shared<LazyPlanner>())
{
}

System System::keepingOut(const Texts &components, const Texts &nets) const
{
    System result(*this);
    result.lazyPlanner = std::make_shared<LazyPlanner>(); // which is of other exclusions
    Texts allComponents = system.excludedComponents();
    allComponents.insert(allComponents.end(), components.begin(), components.end());
    Texts allNets = system.excludedNets();
    allNets.insert(allNets.end(), nets.begin(), nets.end());
    withoutLock([&] {
        result.system.setExcludedComponents(allComponents);
        result.system.setExcludedNets(allNets);
    });
    return result;
}

template <typename T, typename Question>
Value<T> System::answer(const Question &question) const
{
    const T answer = withoutLock(question);
    return Value<T>(values->of(answer));
}

Value<std::vector<VelkComponentInfo>> System::components(const Properties &properties) const
{
    return answer<std::vector<VelkComponentInfo>>([&] { return system.components(properties); });
}

Value<std::vector<VelkPartInfo>> System::parts() const
{
    return answer<std::vector<VelkPartInfo>>([&] { return system.parts(); });
}

Value<std::vector<VelkNetInfo>> System::nets() const
{
    return answer<std::vector<VelkNetInfo>>([&] { return system.nets(); });
}

Value<VelkComponentInfo> System::component(const std::string &ref) const
{
    return answer<VelkComponentInfo>([&] { return system.component(ref); });
}

Value<VelkPartInfo> System::part(const std::string &name) const
{
    return answer<VelkPartInfo>([&] { return system.part(name); });
}

Value<VelkNetInfo> System::net(const std::string &name) const
{
    return answer<VelkNetInfo>([&] { return system.net(name); });
}

Value<std::vector<VelkNodeInfo>> System::pins(const std::string &ref) const
{
    return Value<std::vector<VelkNodeInfo>>(values->pinsOf(ref));
}

Value<VelkNodeInfo> System::pin(const VelkRouteEnd &end) const
{
    return answer<VelkNodeInfo>([&] { return system.pin(end); });
}

Value<std::vector<VelkRoute>> System::routes(const VelkRouteEnd &source, const VelkRouteEnd &dut,
                                             VelkSearchOptions options) const
{
    CallOff callOff;
    options.isCalledOff = callOff.question();
    const auto [start, end, found] = searched(callOff, [&] {
        const VelkNodeInfo from = system.pin(source);
        const VelkNodeInfo to = system.pin(dut);
        return std::make_tuple(from, to, system.routes(endAt(from), endAt(to), options));
    });
    return Value<std::vector<VelkRoute>>(values->routes(start, end, found));
}

Value<VelkNoRouteReason> System::whyNoRoute(const VelkRouteEnd &source, const VelkRouteEnd &dut,
                                            VelkSearchOptions options) const
{
    CallOff callOff;
    options.isCalledOff = callOff.question();
    const auto [start, end, reason] = searched(callOff, [&] {
        return std::make_tuple(system.pin(source), system.pin(dut), system.whyNoRoute(source, dut, options));
    });
    return Value<VelkNoRouteReason>(values->reason(start, end, reason));
}

Value<VelkCoverage> System::coverage(const Properties &sources, const Properties &duts,
                                     const VelkSearchOptions &options, bool withCritical,
                                     const py::object &progress) const
{
    CallOff callOff(progress);
    VelkCoverageOptions wanted{sources, duts, options, withCritical, callOff.progress()};
    wanted.search.isCalledOff = callOff.question();
    const VelkCoverage coverage = searched(callOff, [&] { return system.coverage(wanted); });
    return Value<VelkCoverage>(values->of(coverage));
}

const VelkPlanner &System::planner() const
{
    const std::lock_guard locked(lazyPlanner->mutex);
    if (!lazyPlanner->planner)
        lazyPlanner->planner.emplace(system);
    return *lazyPlanner->planner;
}

Value<VelkPlannedStep> System::plan(const std::string &name, VelkPlanRequest request,
                                    const std::map<std::string, int> &before, const Texts &through) const
{
    CallOff callOff;
    request.isCalledOff = callOff.question();
    const auto [ends, step] = searched(callOff, [&] {
        return std::make_pair(endsOf(system, request.connections),
                              planner().planStep({name, request}, before, through));
    });
    return Value<VelkPlannedStep>(values->plan(ends, step));
}

Value<VelkRelayPositions> System::positions(const std::string &ref) const
{
    return answer<VelkRelayPositions>([&] { return system.positions(ref); });
}

Value<VelkConnections> System::connected(const std::map<std::string, int> &positions) const
{
    return answer<VelkConnections>([&] { return system.connected(positions); });
}

Value<std::vector<VelkFinding>> System::check(const Texts &ignored) const
{
    return answer<std::vector<VelkFinding>>([&] { return system.check(ignored); });
}
}
