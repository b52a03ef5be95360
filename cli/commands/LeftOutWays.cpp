#include "cli/commands/LeftOutWays.h"

#include "cli/terminal/Progress.h"

#include <velk/model/EDAException.h>

#include <algorithm>
#include <chrono>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

/// As far as relays are concerned: whether a state makes a way does not depend on the nets in between.
bool isSameWay(const TracedPath &way, const TracedPath &other)
{
    const auto isSameStep = [](const TracedStep &step, const TracedStep &otherStep) {
        return step.component.data() == otherStep.component.data() && step.entryPin == otherStep.entryPin &&
               step.exitPin == otherStep.exitPin;
    };
    return std::equal(way.steps.cbegin(), way.steps.cend(), other.steps.cbegin(), other.steps.cend(), isSameStep);
}

/// Routes come in the order of the ways.
qsizetype countWithoutRoute(const QList<TracedPath> &ways, const QList<TracedPath> &routes)
{
    qsizetype found = 0;
    for (const TracedPath &way : ways) {
        if (isSameWay(way, routes.at(found)))
            ++found;
    }
    return ways.size() - found;
}
}

std::function<bool()> afterSomeSeconds()
{
    constexpr auto time = std::chrono::seconds(5);
    return [end = std::chrono::steady_clock::now() + time] { return std::chrono::steady_clock::now() > end; };
}

std::optional<qsizetype> leftOutWays(const RouteEnd &source, const RouteEnd &destination, const RouteReport &report)
{
    Progress::begin(u"counting the ways as drawn that are left out"_s);
    Routing asDrawn = report.routing;
    asDrawn.setRelayContacts({});
    asDrawn.setInterruption(afterSomeSeconds());
    const auto &[from, fromNode] = source;
    const auto &[to, toNode] = destination;
    try {
        if (!report.areThereMore)
            return asDrawn.countPathsBetween(from, fromNode->pin, to, toNode->pin) - report.routeCount();
        asDrawn.setMaxPaths(report.routeCount());
        return countWithoutRoute(asDrawn.findTracedPathsBetween(from, fromNode->pin, to, toNode->pin),
                                 report.tracedPaths);
    } catch (const EDASearchCalledOffException &) {
        return {};
    }
}
}
