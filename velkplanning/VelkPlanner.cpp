#include <velkplanning/VelkPlanner.h>

#include <velkplanning/ConnectionPlanner.h>
#include <velkplanning/PlanRecords.h>
#include <velkplanning/PlannedStep.h>

#include <velk/facade/SystemModel.h>
#include <velk/model/EDAException.h>

#include <QHash>

#include <tuple>

namespace Velk {

class VelkPlannerPrivate
{
public:
    explicit VelkPlannerPrivate(const VelkSystem &planned);

    ConnectionRequest requestOf(const VelkPlanRequest &written) const;
    /// By their positions in the model. Other components conduct nothing by themselves.
    std::vector<int> passives(const std::vector<std::string> &refs) const;
    /// \a state is then that of the plan, if there is one.
    PlannedStep planStep(const VelkPlanRequest &request, SwitchedState &state) const;

    const SystemModel system;
    const ConnectionPlanner planner;
    const PlanRecords records;
};

namespace {

void append(std::vector<int> &numbers, const std::vector<int> &more)
{
    numbers.insert(numbers.end(), more.begin(), more.end());
}
}

VelkPlannerPrivate::VelkPlannerPrivate(const VelkSystem &planned)
    : system(planned)
    , planner(system.model())
    , records(system)
{
}

ConnectionRequest VelkPlannerPrivate::requestOf(const VelkPlanRequest &written) const
{
    ConnectionRequest request;
    for (const VelkConnection &connection : written.connections)
        request.connections.append({system.pin(connection.from), system.pin(connection.to)});
    request.excludedComponents = system.excludedComponents();
    append(request.excludedComponents, system.components(written.withoutComponents));
    request.excludedNets = system.excludedNets();
    append(request.excludedNets, system.nets(written.withoutNets));
    request.allowedComponents = system.components(written.allowedComponents);
    request.allowsSideConnections = written.allowsSideConnections;
    request.forbidsCouplings = written.forbidsCouplings;
    request.trustsUnknown = written.trustsUnknown;
    request.aim = written.fewestChanges ? PlanAim::FewestChanges : PlanAim::FewestAway;
    return request;
}

std::vector<int> VelkPlannerPrivate::passives(const std::vector<std::string> &refs) const
{
    const auto &all = system.model().passives();
    QHash<QString, int> numberOfRef;
    for (std::size_t number = 0; number < all.size() && !refs.empty(); ++number)
        numberOfRef.insert(all[number].ref, static_cast<int>(number));
    std::vector<int> numbers;
    for (const int component : system.components(refs)) {
        const auto number = numberOfRef.constFind(system.model().ref(component));
        if (number != numberOfRef.cend())
            numbers.push_back(*number);
    }
    return numbers;
}

PlannedStep VelkPlannerPrivate::planStep(const VelkPlanRequest &request, SwitchedState &state) const
try {
    return Velk::planStep(planner, requestOf(request), state, {request.timeLimit, request.isCalledOff});
} catch (const EDAException &exception) {
    // Whatever a caller can write wrongly has been found before.
    throw VelkSystemException(VelkSystemException::Kind::Plan, exception.message().toStdString());
}

VelkPlanner::VelkPlanner(const VelkSystem &system)
    : d(std::make_shared<const VelkPlannerPrivate>(system))
{
}

VelkPlanner::~VelkPlanner() = default;
VelkPlanner::VelkPlanner(const VelkPlanner &other) = default;
VelkPlanner &VelkPlanner::operator=(const VelkPlanner &other) = default;
VelkPlanner::VelkPlanner(VelkPlanner &&other) noexcept = default;
VelkPlanner &VelkPlanner::operator=(VelkPlanner &&other) noexcept = default;

VelkPlan VelkPlanner::plan(const VelkPlanRequest &request, const std::map<std::string, int> &before) const
{
    SwitchedState state{d->system.positions(before), {}};
    return d->records.planOf(d->planStep(request, state));
}

VelkPlannedStep VelkPlanner::planStep(const VelkPlanStep &step, const std::map<std::string, int> &before,
                                      const std::vector<std::string> &through) const
{
    SwitchedState state{d->system.positions(before), d->passives(through)};
    return d->records.stepOf(step.name, d->planStep(step.request, state));
}

std::vector<VelkPlannedStep> VelkPlanner::planSteps(const std::vector<VelkPlanStep> &steps) const
{
    SwitchedState state{d->system.positions({}), {}};
    std::vector<VelkPlannedStep> result;
    result.reserve(steps.size());
    for (const auto &[name, request] : steps)
        result.push_back(d->records.stepOf(name, d->planStep(request, state)));
    return result;
}

bool operator==(const VelkPlannedWay &a, const VelkPlannedWay &b)
{
    return std::tie(a.steps, a.lastNet) == std::tie(b.steps, b.lastNet);
}

bool operator==(const VelkPlannedGroup &a, const VelkPlannedGroup &b)
{
    return std::tie(a.connections, a.pins, a.through, a.nets, a.sideConnections) ==
           std::tie(b.connections, b.pins, b.through, b.nets, b.sideConnections);
}

bool operator==(const VelkPlannedCoupling &a, const VelkPlannedCoupling &b)
{
    return std::tie(a.groups, a.pins, a.passives) == std::tie(b.groups, b.pins, b.passives);
}

bool operator==(const VelkPlan &a, const VelkPlan &b)
{
    const auto members = [](const VelkPlan &plan) {
        return std::tie(plan.result, plan.positions, plan.positionNames, plan.ways, plan.groups, plan.couplings,
                        plan.alsoConnected, plan.unknown, plan.conflict, plan.bottleneck);
    };
    return members(a) == members(b);
}

bool operator==(const VelkTransient &a, const VelkTransient &b)
{
    return std::tie(a.isOnTheWayToRest, a.pins, a.gangs) == std::tie(b.isOnTheWayToRest, b.pins, b.gangs);
}

bool operator==(const VelkPlannedStep &a, const VelkPlannedStep &b)
{
    return std::tie(a.name, a.plan, a.toRest, a.toSet, a.transients) ==
           std::tie(b.name, b.plan, b.toRest, b.toSet, b.transients);
}
}
