#include "benchmarks/Suite.h"
#include "benchmarks/Workload.h"

#include <velkplanning/ConnectionPlanner.h>
#include <velkplanning/PlannedStep.h>

#include <velk/coverage/CoverageMatrix.h>
#include <velk/provider/MultipleEDAProvider.h>
#include <velk/routing/Routing.h>
#include <velk/switching/Connectivity.h>
#include <velk/switching/ExpectedConnections.h>
#include <velk/switching/SwitchingModel.h>

#include <algorithm>
#include <memory>
#include <numeric>
#include <random>
#include <set>
#include <stdexcept>

namespace VelkBenchmarks {

using namespace Qt::StringLiterals;
using namespace Velk;

namespace {

/// A system, and what is asked of it, one after the other.
struct PlanningTask
{
    SwitchingModel model;
    QList<ConnectionRequest> requests;
};

ExpectedConnection connectionOf(const SwitchingModel &model, const QString &fromRef, const QString &fromPin,
                                const QString &toRef, const QString &toPin)
{
    return {{fromRef, fromPin, model.netOf(fromRef, fromPin)}, {toRef, toPin, model.netOf(toRef, toPin)}};
}

MultipleEDAProvider joined(const Workload &workload)
{
    return {workload.providers(), {MultipleEDAProvider::DEFAULT_CONNECTOR_COMPONENT_TYPE}};
}

/// The step "load 2" of examples/demo/plan.csv.
PlanningTask demoTask()
{
    const Workload workload = demoSystem();
    const SwitchingModel model(joined(workload));
    return {model,
            {{{connectionOf(model, u"U5#1"_s, u"1"_s, u"J2#3"_s, u"1"_s),
               connectionOf(model, u"U5#1"_s, u"2"_s, u"J2#3"_s, u"2"_s),
               connectionOf(model, u"U3#1"_s, u"1"_s, u"J2#3"_s, u"3"_s),
               connectionOf(model, u"U1#1"_s, u"1"_s, u"J2#3"_s, u"5"_s),
               connectionOf(model, u"U1#1"_s, u"4"_s, u"J2#3"_s, u"6"_s),
               connectionOf(model, u"U2#1"_s, u"1"_s, u"J2#3"_s, u"5"_s)}}}};
}

/// All pins of the instrument, each to another one of the DUT, as a generator of random numbers will have it.
PlanningTask permutationsOn(const Workload &workload, int pins, int count)
{
    std::mt19937 random(17);
    std::vector<int> dutPins(static_cast<std::size_t>(pins));
    std::iota(dutPins.begin(), dutPins.end(), 1);
    PlanningTask task{SwitchingModel(*workload.boards.front()), {}};
    for (int i = 0; i < count; ++i) {
        ConnectionRequest request;
        for (std::size_t place = dutPins.size(); place-- > 0;) { // std::shuffle() differs from library to library
            std::swap(dutPins[place], dutPins[random() % (place + 1)]);
            request.connections.append(connectionOf(task.model, u"U1"_s, QString::number(place + 1), u"J1"_s,
                                                    QString::number(dutPins[place])));
        }
        task.requests.append(request);
    }
    return task;
}

/// Connections between pins of the exported system that a route leads between each, no pin being in two of them.
PlanningTask exportedTask(int steps)
{
    constexpr int connectionsOfStep = 10;
    const Workload workload = exportedSystem();
    MultipleEDAProvider provider = joined(workload);
    PlanningTask task{SwitchingModel(provider), {}};
    Routing routing(&provider);
    routing.setRelayContacts(task.model.relayContacts());
    const CoverageMatrix matrix(routing, CoverageMatrix::pinsOnNets(provider, u"Source"_s),
                                CoverageMatrix::pinsOnNets(provider, u"DUT"_s));
    std::mt19937 random(17);
    while (task.requests.size() < steps) {
        ConnectionRequest request;
        std::set<qsizetype> usedSources;
        std::set<qsizetype> usedDuts;
        while (request.connections.size() < connectionsOfStep) {
            const auto source = static_cast<qsizetype>(random()) % matrix.sources().size();
            const auto dut = static_cast<qsizetype>(random()) % matrix.duts().size();
            if (matrix.row(source).at(dut) == CoverageMatrix::unreached || usedSources.count(source) > 0 ||
                usedDuts.count(dut) > 0)
                continue;
            usedSources.insert(source);
            usedDuts.insert(dut);
            const auto &from = *matrix.sources().at(source).node;
            const auto &to = *matrix.duts().at(dut).node;
            request.connections.append(connectionOf(task.model, from.ref, from.pin, to.ref, to.pin));
        }
        task.requests.append(request);
    }
    return task;
}

void requireBestPlan(const PlanningTask &task, const ConnectionRequest &request, const ConnectionPlan &plan)
{
    if (plan.result != PlanResult::Optimal)
        throw std::logic_error("a plan is not there, or not proven the best");
    const Connectivity atRest(task.model);
    Connectivity state(task.model);
    state.setPositions(plan.positions);
    const auto compared = compareConnections(state, atRest, request.connections);
    if (!compared.missing.isEmpty() || !compared.shorts.isEmpty())
        throw std::logic_error("a plan does not make its connections alone");
}

/// The planner is made each time.
double secondsToPlanSteps(const PlanningTask &task)
{
    std::vector<PlannedStep> steps;
    const double seconds = secondsOf([&] {
        const ConnectionPlanner planner(task.model);
        SwitchedState state{std::vector<int>(static_cast<std::size_t>(task.model.gangCount()), 0), {}};
        for (const ConnectionRequest &request : task.requests)
            steps.push_back(planStep(planner, request, state));
    });
    for (std::size_t i = 0; i < steps.size(); ++i)
        requireBestPlan(task, task.requests.at(static_cast<qsizetype>(i)), steps[i].plan);
    return seconds;
}

/// Of the request that takes the longest.
double secondsOfSlowestPlan(const PlanningTask &task)
{
    double slowest = 0;
    for (const ConnectionRequest &request : task.requests)
        slowest = std::max(slowest, secondsToPlanSteps({task.model, {request}}));
    return slowest;
}

/// Each connection needs a line, of which there is one less.
double secondsToFindBottleneck(const PlanningTask &task)
{
    ConnectionPlan plan;
    const double seconds = secondsOf([&] { plan = ConnectionPlanner(task.model).plan(task.requests.first()); });
    const auto connections = static_cast<std::size_t>(task.requests.first().connections.size());
    const bool isOfLines = std::all_of(plan.bottleneck.begin(), plan.bottleneck.end(),
                                       [&](int net) { return task.model.netNames(net).first().startsWith(u"/LINE"); });
    if (plan.result != PlanResult::Impossible || plan.conflict.size() != connections ||
        plan.bottleneck.size() != connections - 1 || !isOfLines)
        throw std::logic_error("the bottleneck was not found");
    return seconds;
}

void registerTask(const std::string &name, const std::function<PlanningTask()> &make,
                  double (*seconds)(const PlanningTask &))
{
    registerComparison("planning/" + name, [=]() -> Comparison {
        const auto &task = kept("planning " + name, make);
        return {{{"velk", [&task, seconds] { return seconds(task); }}},
                {{"steps", static_cast<double>(task.requests.size())},
                 {"connections", static_cast<double>(task.requests.first().connections.size())}}};
    });
}
}

void registerPlanning(const Suite &suite)
{
    const int lines = suite.isQuick ? 8 : 32;
    const int networkLines = suite.isQuick ? 8 : 16;
    const int groupSize = networkLines / 4;
    const int permutations = suite.isQuick ? 2 : 10;
    registerTask("demo", demoTask, secondsToPlanSteps);
    registerTask(
        "large", [] { return exportedTask(1); }, secondsToPlanSteps);
    registerTask(
        "matrix", [=] { return permutationsOn(crosspointMatrix(lines), lines, permutations); }, secondsOfSlowestPlan);
    registerTask(
        "bottleneck", [=] { return permutationsOn(sharedLines(lines, lines + 1), lines + 1, 1); },
        secondsToFindBottleneck);
    registerTask(
        "network",
        [=] {
            const Workload network = switchedNetwork(networkLines, {{groupSize, groupSize}, {2, 2}});
            return permutationsOn(network, networkLines, permutations);
        },
        secondsOfSlowestPlan);
    registerTask(
        "steps", [suite] { return exportedTask(suite.isQuick ? 5 : 100); }, secondsToPlanSteps);
}
}
