#include <velk/routing/PrunedPathSearch.h>

namespace Velk {

namespace {

SearchMemory &memoryOfThread()
{
    thread_local SearchMemory memory;
    return memory;
}
}

PrunedPathSearch::PrunedPathSearch(const NetlistIndex &netlist, const SearchRules &searchRules)
    : index(netlist)
    , rules(searchRules)
    , memory(memoryOfThread())
    , bounds(netlist, searchRules, memory)
{
}

QList<RoutingPath> PrunedPathSearch::run()
{
    memory.onBranch.clear(index.netCount());
    bounds.measure();
    enterSourceNet();
    while (!branch.empty()) {
        const Level &level = branch.back();
        if (level.nextPin < level.endPin)
            crossToNextPin();
        else if (level.nextNode < level.endNode)
            enterNextComponent();
        else
            leaveNet();
    }
    return paths.take(index);
}

void PrunedPathSearch::enterSourceNet()
{
    const int net = index.netOfTerminal(rules.source);
    if (net == NetlistIndex::none)
        return;
    if (bounds.isLast(net))
        paths.add();
    else if (rules.maxNetsSearched >= 1 && rules.maxAdditionalNodes >= 0 && bounds.allow(net, 0, 0))
        enterNet(net, rules.source, {});
}

void PrunedPathSearch::crossToNextPin()
{
    Level &level = branch.back();
    const int exit = index.terminalOfPin(level.nextPin++);
    const int net = exit == level.entry ? NetlistIndex::none : index.netOfTerminal(exit);
    if (net == NetlistIndex::none || memory.onBranch.has(net))
        return;
    if (bounds.isLast(net)) {
        paths.add(branch);
        return;
    }
    if (!bounds.allow(net, static_cast<qsizetype>(branch.size()), level.additionalNodes.size()))
        return;
    const auto additionalNodes = additionalNodesWith(net, exit);
    if (additionalNodes.size() <= rules.maxAdditionalNodes)
        enterNet(net, exit, additionalNodes);
}

void PrunedPathSearch::enterNextComponent()
{
    Level &level = branch.back();
    const NumberedNode &node = index.numberedNode(level.nextNode++);
    const bool isArrival = node.terminal == level.arrival; // equal nodes are one terminal
    if (node.component == NetlistIndex::none || isArrival || !rules.isSwitchable(index, node.component))
        return;
    level.component = node.component;
    level.entry = node.terminal;
    level.nextPin = index.firstPin(node.component);
    level.endPin = index.firstPin(node.component + 1);
}

void PrunedPathSearch::enterNet(int net, int arrival, const QList<QSharedPointer<EDANetNode>> &additionalNodes)
{
    memory.onBranch.set(net);
    branch.push_back(Level{net, arrival, index.firstNode(net), index.firstNode(net + 1), NetlistIndex::none,
                           NetlistIndex::none, 0, 0, additionalNodes});
}

void PrunedPathSearch::leaveNet()
{
    memory.onBranch.unset(branch.back().net);
    branch.pop_back();
}

QList<QSharedPointer<EDANetNode>> PrunedPathSearch::additionalNodesWith(int net, int arrival) const
{
    auto result = branch.back().additionalNodes;
    for (int i = index.firstNode(net); i < index.firstNode(net + 1); ++i) {
        const NumberedNode &node = index.numberedNode(i);
        if (node.component != NetlistIndex::none && rules.isInterface(index, node.component) &&
            rules.isAdditional(node, arrival))
            result.append(index.node(net, i));
    }
    return result;
}
}
