#include <velkplanning/ConnectionPlanner.h>

#include <velkplanning/PlanCheck.h>
#include <velkplanning/PlanSearch.h>
#include <velkplanning/PlanningTime.h>
#include <velkplanning/ScarceNets.h>
#include <velkplanning/WayCosts.h>

#include <velk/model/EDAException.h>
#include <velk/switching/Connectivity.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace Velk {

class ConnectionPlannerPrivate
{
public:
    explicit ConnectionPlannerPrivate(const SwitchingModel &model)
        : network(model)
        , atRest(model)
    {
    }

    const SwitchNetwork network;
    const Connectivity atRest;
};

namespace {

void requireNumbers(const std::vector<int> &numbers, int count, const QString &name)
{
    for (const int number : numbers) {
        if (number < 0 || number >= count)
            throw EDAException(u"a request names %1 %2, of which there are %3"_s.arg(name, QString::number(number),
                                                                                     QString::number(count)));
    }
}

void requireOnNet(const SwitchingModel &model, const InterfacePin &pin)
{
    requireNumbers({pin.net}, model.netCount(), u"net"_s);
    if (model.netNames(pin.net).isEmpty())
        throw EDAException(u"pin %1 of %2 is on no net"_s.arg(pin.number, pin.ref));
}

void requireSound(const SwitchingModel &model, const ConnectionRequest &request, const std::vector<int> &before)
{
    if (!model.errors().isEmpty())
        throw EDAException(model.errors().first().message());
    for (const ExpectedConnection &connection : request.connections) {
        requireOnNet(model, connection.from);
        requireOnNet(model, connection.to);
    }
    requireNumbers(request.excludedComponents, model.componentCount(), u"component"_s);
    requireNumbers(request.allowedComponents, model.componentCount(), u"component"_s);
    requireNumbers(request.excludedNets, model.netCount(), u"net"_s);
    if (static_cast<int>(before.size()) != model.gangCount())
        throw EDAException(u"there are %1 positions before, but %2 gangs"_s.arg(QString::number(before.size()),
                                                                                QString::number(model.gangCount())));
    for (int gang = 0; gang < model.gangCount(); ++gang)
        requireNumbers({before[static_cast<std::size_t>(gang)]}, model.gang(gang).positionCount, u"position"_s);
}

/// One request, and parts of it.
class RequestPlanning
{
public:
    RequestPlanning(const ConnectionPlannerPrivate &planner, const ConnectionRequest &wanted,
                    const std::vector<int> &positionsBefore, const PlanningTime &planningTime)
        : network(planner.network)
        , atRest(planner.atRest)
        , request(wanted)
        , before(positionsBefore)
        , time(planningTime)
    {
    }

    ConnectionPlan plan() const
    {
        const PlanProblem problem(network, request, before);
        PlanSearch search(problem, time);
        PlanResult result = search.findAny();
        if (result == PlanResult::Impossible)
            return whyImpossible(problem);
        if (result == PlanResult::Unknown)
            return withoutAnswer();
        result = search.improve();
        ConnectionPlan plan = checkedPlan(problem, search.draft());
        plan.result = result;
        return plan;
    }

private:
    static ConnectionPlan withoutAnswer() { return {PlanResult::Unknown, {}, {}, {}, {}, {}, {}, {}}; }

    /// Throws an EDAException for a plan that is none, which is an error of planning.
    ConnectionPlan checkedPlan(const PlanProblem &problem, const PlanDraft &draft) const
    {
        DraftState state(problem, draft);
        std::vector<std::vector<int>> through(static_cast<std::size_t>(problem.groupCount()));
        for (const int passive : draft.through) {
            const int net = network.model.passives()[static_cast<std::size_t>(passive)].nets.front();
            through[static_cast<std::size_t>(state.groupAt(net))].push_back(passive);
        }
        const PlanCheck check(request, atRest);
        ConnectionPlan plan = check.planWith(draft.positions, through);
        const QStringList faults = check.faultsOf(plan, before);
        if (!faults.isEmpty())
            throw EDAException(u"the plan that was found does not hold: %1"_s.arg(faults.join(u"; "_s)));
        return plan;
    }

    ConnectionPlan whyImpossible(const PlanProblem &problem) const
    {
        const std::vector<int> conflict = conflictIn(problem);
        if (conflict.empty())
            return withoutAnswer();
        const ConnectionRequest conflicting = partOf(conflict);
        const PlanProblem part(network, conflicting, before);
        return {PlanResult::Impossible, {}, {}, {}, {}, {}, conflict, namedScarceNetsOf(part)};
    }

    /// None where one of them has no name by which to tell it.
    std::vector<int> namedScarceNetsOf(const PlanProblem &problem) const
    {
        const auto nets = scarceNetsOf(problem);
        const bool areNamed =
            std::none_of(nets.cbegin(), nets.cend(), [this](int net) { return network.model.netNames(net).isEmpty(); });
        return areNamed ? nets : std::vector<int>();
    }

    /// Without any single one of them there is a plan. None where the time was up.
    std::vector<int> conflictIn(const PlanProblem &problem) const
    {
        const int brokenGroup = WayCosts(problem).brokenGroup();
        if (brokenGroup != PlanProblem::none) {
            const auto suspects = connectionsOf(problem, brokenGroup, brokenGroup + 1);
            if (resultOf(suspects) == PlanResult::Impossible) // it need not be without the others
                return shrunk(suspects, suspects.size());
        }
        const auto scarceNets = scarceNetsOf(problem);
        if (!scarceNets.empty()) // one group more than there are nets is enough
            return shrunk(connectionsOf(problem, 0, static_cast<int>(scarceNets.size()) + 1), 1);
        const auto all = connectionsOf(problem, 0, problem.groupCount());
        return shrunk(all, all.size());
    }

    static std::vector<int> connectionsOf(const PlanProblem &problem, int firstGroup, int endGroup)
    {
        std::vector<int> connections;
        for (int group = firstGroup; group < endGroup; ++group) {
            const auto &ofGroup = problem.groups.at(group).connections;
            connections.insert(connections.end(), ofGroup.cbegin(), ofGroup.cend());
        }
        std::sort(connections.begin(), connections.end());
        return connections;
    }

    /// Leaves out connections of which there is no plan, first so many at once, until nothing more can be left out.
    std::vector<int> shrunk(std::vector<int> conflict, std::size_t count) const
    {
        while (count > 0) {
            const std::size_t sizeBefore = conflict.size();
            for (std::size_t first = 0; first < conflict.size();) {
                auto rest = conflict;
                const auto begin = rest.begin() + static_cast<std::ptrdiff_t>(first);
                rest.erase(begin, begin + static_cast<std::ptrdiff_t>(std::min(count, rest.size() - first)));
                const PlanResult result = resultOf(rest);
                if (result == PlanResult::Unknown || time.isUp())
                    return {};
                if (result == PlanResult::Impossible)
                    conflict = rest;
                else
                    first += count;
            }
            // Without a connection two groups may come apart, and what could not be left out before now can.
            if (count > 1 || conflict.size() == sizeBefore)
                count /= 2;
        }
        return conflict;
    }

    ConnectionRequest partOf(const std::vector<int> &connections) const
    {
        ConnectionRequest part = request;
        part.connections.clear();
        for (const int connection : connections)
            part.connections.append(request.connections.at(connection));
        return part;
    }

    PlanResult resultOf(const std::vector<int> &connections) const
    {
        const ConnectionRequest part = partOf(connections);
        const PlanProblem problem(network, part, before);
        return PlanSearch(problem, time).findAny();
    }

    const SwitchNetwork &network;
    const Connectivity &atRest;
    const ConnectionRequest &request;
    const std::vector<int> &before;
    const PlanningTime &time;
};
}

ConnectionPlanner::ConnectionPlanner(const SwitchingModel &model)
    : d(std::make_shared<const ConnectionPlannerPrivate>(model))
{
}

ConnectionPlanner::~ConnectionPlanner() = default;
ConnectionPlanner::ConnectionPlanner(const ConnectionPlanner &other) = default;
ConnectionPlanner &ConnectionPlanner::operator=(const ConnectionPlanner &other) = default;
ConnectionPlanner::ConnectionPlanner(ConnectionPlanner &&other) noexcept = default;
ConnectionPlanner &ConnectionPlanner::operator=(ConnectionPlanner &&other) noexcept = default;

const SwitchingModel &ConnectionPlanner::model() const
{
    return d->network.model;
}

ConnectionPlan ConnectionPlanner::plan(const ConnectionRequest &request, const std::vector<int> &before,
                                       const PlanningLimits &limits) const
{
    const PlanningTime time(limits);
    const auto &positions =
        before.empty() ? std::vector<int>(static_cast<std::size_t>(model().gangCount()), 0) : before;
    requireSound(model(), request, positions);
    return RequestPlanning(*d, request, positions, time).plan();
}
}
