#include <velk/coverage/PlainPaths.h>

namespace Velk {

PlainPaths::PlainPaths(const Routing &configuredRouting, const ComponentNumbers &componentNumbers,
                       const QList<NodeWithComponent> &sourcePins, const QList<NodeWithComponent> &dutPins)
    : routing(configuredRouting)
    , numbers(componentNumbers)
    , sources(sourcePins)
    , duts(dutPins)
{
}

std::vector<PathFinder::Path> PlainPaths::shortestPaths(qsizetype source, const std::vector<qsizetype> &wanted,
                                                        int without)
{
    Routing searching = routing;
    if (without != none)
        searching.setExcludedComponents(routing.excludedComponents() + QList{numbers.component(without)->ref});
    std::vector<Path> result;
    result.reserve(wanted.size());
    for (const qsizetype dut : wanted)
        result.push_back(firstPath(searching, source, dut));
    return result;
}

PathFinder::Path PlainPaths::firstPath(qsizetype source, qsizetype dut, int switches)
{
    Routing searching = routing;
    searching.setMaxSwitchingComponentsPerPath(switches - 1);
    return firstPath(searching, source, dut);
}

PathFinder::Path PlainPaths::firstPath(const Routing &searching, qsizetype source, qsizetype dut) const
{
    Routing first = searching;
    first.setMaxPaths(1);
    const auto paths = find(first, source, dut);
    if (paths.isEmpty())
        return {};
    Path result(std::in_place);
    for (const TracedStep &step : paths.first().steps)
        result->push_back(numbers.numberOf(*step.component));
    return result;
}

bool PlainPaths::isOnAnyPath(int component)
{
    Routing searching = routing;
    searching.setRequiredComponents(routing.requiredComponents() + QList{numbers.component(component)->ref});
    for (qsizetype source = 0; source < sources.size(); ++source) {
        for (qsizetype dut = 0; dut < duts.size(); ++dut) {
            if (firstPath(searching, source, dut))
                return true;
        }
    }
    return false;
}

QList<TracedPath> PlainPaths::find(const Routing &searching, qsizetype source, qsizetype dut) const
{
    const NodeWithComponent &from = sources.at(source);
    const NodeWithComponent &to = duts.at(dut);
    return searching.findTracedPathsBetween(from.component, from.node->pin, to.component, to.node->pin);
}
}
