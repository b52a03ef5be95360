#include <velk/coverage/PlainPaths.h>

#include <algorithm>

namespace Velk {

PlainPaths::PlainPaths(const Routing &configuredRouting, const ComponentNumbers &componentNumbers,
                       const NodeWithComponent &sourcePin, const QList<NodeWithComponent> &dutPins)
    : routing(configuredRouting)
    , numbers(componentNumbers)
    , source(sourcePin)
    , duts(dutPins)
{
}

std::vector<PathFinder::Path> PlainPaths::shortestPaths(const std::vector<qsizetype> &wanted, int without)
{
    Routing searching = routing;
    if (without != none)
        searching.setExcludedComponents(routing.excludedComponents() + QList{numbers.component(without)->ref});
    std::vector<Path> result;
    result.reserve(wanted.size());
    for (const qsizetype dut : wanted)
        result.push_back(firstPath(searching, dut));
    return result;
}

PathFinder::Path PlainPaths::firstPath(qsizetype dut)
{
    return firstPath(routing, dut);
}

PathFinder::Path PlainPaths::firstPath(const Routing &searching, qsizetype dut) const
{
    Routing first = searching;
    first.setMaxPaths(1);
    const auto paths = find(first, dut);
    if (paths.isEmpty())
        return {};
    Path result(std::in_place);
    for (const TracedStep &step : paths.first().steps)
        result->push_back(numbers.numberOf(*step.component));
    return result;
}

bool PlainPaths::hasPathOver(int component, qsizetype dut)
{
    Routing all = routing;
    all.setMaxPaths(0);
    const auto crosses = [&](const TracedStep &step) { return numbers.numberOf(*step.component) == component; };
    const auto paths = find(all, dut);
    return std::any_of(paths.cbegin(), paths.cend(), [&](const TracedPath &path) {
        return std::any_of(path.steps.cbegin(), path.steps.cend(), crosses);
    });
}

QList<TracedPath> PlainPaths::find(const Routing &searching, qsizetype dut) const
{
    const NodeWithComponent &destination = duts.at(dut);
    return searching.findTracedPathsBetween(source.component, source.node->pin, destination.component,
                                            destination.node->pin);
}
}
