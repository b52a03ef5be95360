#include <velk/search/PrunedPathSearch.h>

#include <utility>

namespace Velk {

namespace {

constexpr std::size_t usualDepth = 8;
}

PrunedPathSearch::PrunedPathSearch(const NetlistIndex &netlist, const SearchRules &searchRules,
                                   Interruption &searchInterruption, bool keepsCrossings)
    : index(netlist)
    , rules(searchRules)
    , interruption(searchInterruption)
    , memory(borrowed.memory())
    , deepening(searchRules.maxNetsSearched, searchRules.maxAdditionalNodes, searchRules.maxPaths)
    , bounds(netlist, searchRules, deepening, interruption, memory)
    , paths(keepsCrossings)
{
}

FoundPaths PrunedPathSearch::run()
{
    memory.onBranch.clear(index.netCount());
    branch.reserve(usualDepth);
    bounds.measure();
    do
        searchOnce();
    while (deepening.startNextPass());
    return std::move(paths);
}

void PrunedPathSearch::searchOnce()
{
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
}

void PrunedPathSearch::enterSourceNet()
{
    const int net = index.netOfTerminal(rules.ends.source);
    if (net == NetlistIndex::none)
        return;
    if (bounds.isLast(net))
        keepPath(net);
    else if (bounds.allow(net, 0, 0))
        enterNet(net, rules.ends.source, 0);
}

void PrunedPathSearch::crossToNextPin()
{
    Level &level = branch.back();
    const int exit = index.terminalOfPin(level.nextPin++);
    const int net = exit == level.entry ? NetlistIndex::none : index.netOfTerminal(exit);
    if (net == NetlistIndex::none || memory.onBranch.has(net))
        return;
    if (bounds.isLast(net)) {
        keepPath(net);
        return;
    }
    const std::size_t collected = additionalNodes.size();
    const auto switched = static_cast<qsizetype>(branch.size());
    if (!bounds.allow(net, switched, additionalNodeCount()))
        return;
    collectAdditionalNodes(net, exit);
    if (deepening.enters(switched, additionalNodeCount())) {
        enterNet(net, exit, collected);
    } else {
        dropAdditionalNodes(collected);
        bounds.noteUselessBranch();
    }
}

void PrunedPathSearch::enterNextComponent()
{
    Level &level = branch.back();
    const NumberedNode &node = index.numberedNode(level.nextNode++);
    if (!rules.canCross(node, level.arrival))
        return;
    level.component = node.component;
    level.entry = node.terminal;
    level.nextPin = index.firstPin(node.component);
    level.endPin = index.firstPin(node.component + 1);
    interruption.work(static_cast<std::size_t>(level.endPin - level.nextPin));
}

void PrunedPathSearch::enterNet(int net, int arrival, std::size_t additionalNodesBefore)
{
    memory.onBranch.set(net);
    branch.push_back(Level{net, arrival, index.firstNode(net), index.firstNode(net + 1), NetlistIndex::none,
                           NetlistIndex::none, 0, 0, additionalNodesBefore});
}

void PrunedPathSearch::leaveNet()
{
    const Level &level = branch.back();
    memory.onBranch.unset(level.net);
    dropAdditionalNodes(level.additionalNodesBefore);
    branch.pop_back();
}

void PrunedPathSearch::collectAdditionalNodes(int net, int arrival)
{
    interruption.work(static_cast<std::size_t>(index.firstNode(net + 1) - index.firstNode(net)));
    for (int i = index.firstNode(net); i < index.firstNode(net + 1); ++i) {
        if (rules.isAdditional(index.numberedNode(i), arrival)) {
            additionalNodes.push_back({net, i});
            keptNodes.reset();
        }
    }
}

void PrunedPathSearch::dropAdditionalNodes(std::size_t countBefore)
{
    if (additionalNodes.size() == countBefore)
        return;
    additionalNodes.resize(countBefore);
    keptNodes.reset();
}

std::size_t PrunedPathSearch::keptNodesPlace()
{
    if (!keptNodes)
        keptNodes = paths.keepNodes(additionalNodes);
    return *keptNodes;
}

void PrunedPathSearch::keepPath(int lastNet)
{
    if (deepening.keep(static_cast<qsizetype>(branch.size()), additionalNodeCount()))
        paths.add(branch, lastNet, keptNodesPlace(), additionalNodes.size());
    if (deepening.isComplete())
        branch.clear(); // ends the search; asking at each of its steps would be felt
}
}
