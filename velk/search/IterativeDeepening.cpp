#include <velk/search/IterativeDeepening.h>

#include <algorithm>
#include <limits>

namespace Velk {

namespace {

constexpr qsizetype none = std::numeric_limits<qsizetype>::max();
}

IterativeDeepening::IterativeDeepening(qsizetype maxSwitches, qsizetype maxNodes, qsizetype maxPaths)
    : limits{maxSwitches, maxNodes}
    , bounded(maxPaths > 0)
    , missing(bounded ? maxPaths : none)
    , depth(bounded ? Depth{0, 0} : limits)
    , next{none, none}
{
}

void IterativeDeepening::noteCut(qsizetype switches, qsizetype nodes)
{
    if (switches > limits.switches || nodes > limits.nodes)
        return;
    if (switches <= depth.switches)
        next.nodes = std::min(next.nodes, nodes);
    else
        next.switches = std::min(next.switches, switches);
}

// More nodes come before more switches, as in the order of results.
bool IterativeDeepening::startNextPass()
{
    if (isComplete())
        return false;
    if (next.nodes != none)
        depth.nodes = next.nodes;
    else if (next.switches != none)
        depth = {next.switches, 0};
    else
        return false;
    next = {none, none};
    return true;
}
}
