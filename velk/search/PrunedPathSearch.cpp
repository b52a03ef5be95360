#include <velk/search/PrunedPathSearch.h>

namespace Velk {

PrunedPathSearch::PrunedPathSearch(const NetlistIndex &netlist, const CrossingGraph &crossingGraph,
                                   const SearchRules &searchRules, Interruption &searchInterruption, Kept keptOfPaths)
    : index(netlist)
    , graph(crossingGraph)
    , rules(searchRules)
    , interruption(searchInterruption)
    , deepening(searchRules.maxNetsSearched, searchRules.maxAdditionalNodes, searchRules.maxPaths)
    , bounds(netlist, crossingGraph, searchRules, deepening, interruption, borrowed.memory())
    , lastCrossings(crossingGraph, searchRules, interruption, borrowed.memory())
    , kept(keptOfPaths)
    , paths(borrowed.memory().paths)
{
    paths.setKeepsCrossings(kept == Kept::Crossings);
    if (graph.contacts())
        held.emplace(*graph.contacts(), borrowed.memory());
    if (!rules.required.empty() && !rules.requiresImpossible())
        required.emplace(index, graph, rules, interruption);
    areStepsWatched = held || required;
}

const FoundPaths &PrunedPathSearch::run()
{
    bounds.measure();
    do
        searchOnce();
    while (deepening.startNextPass());
    return paths;
}

void PrunedPathSearch::searchOnce()
{
    enterSourceNet();
    while (!branch.isEmpty()) {
        if (const CrossingRow *row = nextRow())
            cross(*row);
        else
            leaveNet();
    }
}

void PrunedPathSearch::enterSourceNet()
{
    const int net = index.netOfTerminal(rules.ends.source);
    if (net == NetlistIndex::none || rules.isExcludedNet(net) || rules.requiresImpossible())
        return;
    if (bounds.isLast(net)) {
        if (!required)
            keepPath(net);
    } else if (bounds.allow(net, 0, 0) && allowRequired(net)) {
        searchFrom({net, rules.sourceComponent, rules.ends.source}, 0);
    }
}

// The next one by which the branch may go on, or null.
const CrossingRow *PrunedPathSearch::nextRow()
{
    Level &level = branch.last();
    while (true) {
        for (const CrossingRow *row = level.nextRow; row != level.endRow; ++row) {
            if (bounds.mayLeadOn(row->net, level.switchesLeft)) {
                level.nextRow = row + 1;
                return row;
            }
        }
        if (!level.junction)
            return nullptr;
        level.nextRow = level.junction + 1;
        level.endRow = graph.rowsOf(level.arrival.net).end();
        level.junction = nullptr;
    }
}

void PrunedPathSearch::cross(const CrossingRow &row)
{
    const Level &level = branch.last();
    const int entry = level.junction ? level.junction->node : row.node;
    const bool leadsBack =
        level.junction ? index.numberedNode(entry).terminal == row.exit : isArrival(row, level.arrival);
    if (leadsBack || rules.isExcludedComponent(row.component))
        return;
    if (graph.leadsToJunction(row)) {
        enterJunction(row);
        return;
    }
    steps.last() = {row.component, {level.arrival.net, entry, row.exit}};
    if (!takeStep()) // before the bounds note what would lead on
        return;
    const bool isEntered = bounds.allow(row.net, steps.size(), additionalNodes.size()) && allowRequired(row.net) &&
                           enterNet({row.net, row.component, row.exit});
    if (!isEntered)
        dropStep();
}

void PrunedPathSearch::enterJunction(const CrossingRow &row)
{
    Level &level = branch.last();
    const auto exits = graph.rowsOfJunction(row.exit);
    interruption.work(exits.size());
    level.junction = &row;
    level.nextRow = exits.begin();
    level.endRow = exits.end();
}

// False if nothing is to be searched from there.
bool PrunedPathSearch::enterNet(const Arrival &arrival)
{
    const qsizetype collected = additionalNodes.size();
    collectAdditionalNodes(arrival);
    if (deepening.enters(steps.size(), additionalNodes.size()))
        return searchFrom(arrival, collected);
    dropAdditionalNodes(collected);
    bounds.noteUselessBranch();
    return false;
}

// Paths that end one switch further are kept at once: others that the net leads to are longer, and so come after them
// whatever the order of the rows.
bool PrunedPathSearch::searchFrom(const Arrival &arrival, qsizetype additionalNodesBefore)
{
    steps.append(Step());
    const int switchesLeft = bounds.switchesLeft(steps.size());
    bool mayLeadOn = true;
    if (bounds.isNextToLast(arrival.net)) {
        const NearNet &near = lastCrossings.of(arrival.net);
        mayLeadOn = near.switchesBeyond <= switchesLeft;
        keepPathsFrom(arrival, near);
    }
    if (!mayLeadOn || deepening.isComplete()) {
        steps.removeLast();
        dropAdditionalNodes(additionalNodesBefore);
        return false;
    }
    const auto rows = graph.rowsOf(arrival.net);
    interruption.work(rows.size());
    bounds.toggleOnBranch(arrival.net);
    branch.append({arrival, switchesLeft, rows.begin(), rows.end(), nullptr, additionalNodesBefore});
    return true;
}

void PrunedPathSearch::keepPathsFrom(const Arrival &arrival, const NearNet &near)
{
    const auto rows = lastCrossings.rowsOf(near);
    interruption.work(rows.size());
    for (const CrossingRow &row : rows) {
        if (isArrival(row, arrival))
            continue;
        if (graph.leadsToJunction(row)) {
            keepPathsOverJunction(arrival.net, row);
        } else {
            steps.last() = {row.component, {arrival.net, row.node, row.exit}};
            crossLast(row.net);
        }
        if (deepening.isComplete())
            return;
    }
}

void PrunedPathSearch::keepPathsOverJunction(int net, const CrossingRow &entry)
{
    const auto exits = lastCrossings.rowsOfJunction(entry.exit);
    interruption.work(exits.size());
    for (const CrossingRow &exit : exits) {
        if (index.numberedNode(entry.node).terminal == exit.exit)
            continue;
        steps.last() = {exit.component, {net, entry.node, exit.exit}};
        crossLast(exit.net);
        if (deepening.isComplete())
            return;
    }
}

void PrunedPathSearch::crossLast(int lastNet)
{
    if (!areStepsWatched) {
        keepPath(lastNet);
        return;
    }
    if (!takeStep())
        return;
    if (!required || required->areComplete())
        keepPath(lastNet);
    dropStep();
}

// The last one. False if no state of the relays makes it and all before it.
bool PrunedPathSearch::takeStep()
{
    if (!areStepsWatched)
        return true;
    const auto &[component, crossing] = steps.last();
    if (held &&
        !held->take(graph.contacts()->contactBetween(index.numberedNode(crossing.node).terminal, crossing.exit)))
        return false;
    if (required)
        required->add(component);
    return true;
}

void PrunedPathSearch::dropStep()
{
    if (!areStepsWatched)
        return;
    if (held)
        held->release();
    if (required)
        required->remove(steps.last().component);
}

// Whether the branch may enter this net, having taken so many steps, as far as it still lacks what it has to cross.
bool PrunedPathSearch::allowRequired(int net)
{
    if (!required || required->areComplete())
        return true;
    const int switches = required->switchesFrom(net);
    return switches != Marks::unmarked && deepening.enters(steps.size() + switches, additionalNodes.size());
}

void PrunedPathSearch::leaveNet()
{
    const Level &level = branch.last();
    bounds.toggleOnBranch(level.arrival.net);
    dropAdditionalNodes(level.additionalNodesBefore);
    branch.removeLast();
    steps.removeLast();
    if (!branch.isEmpty()) // nothing was crossed to the first net
        dropStep();
}

// Whether the row crosses the component by the terminal by which the branch has come. Equal nodes are one terminal.
bool PrunedPathSearch::isArrival(const CrossingRow &row, const Arrival &arrival) const
{
    return row.component == arrival.component &&
           !PathEnds<int>::canCross(index.numberedNode(row.node).terminal, arrival.terminal);
}

// As many as show that they are too many, since thousands may lie on a net.
void PrunedPathSearch::collectAdditionalNodes(const Arrival &arrival)
{
    for (const InterfaceNode &node : graph.interfaceNodesOf(arrival.net)) {
        interruption.work(1);
        if (!rules.ends.isAdditional(node.terminal, arrival.terminal))
            continue;
        additionalNodes.append({arrival.net, node.node});
        keptNodes.reset();
        if (additionalNodes.size() > rules.maxAdditionalNodes)
            return;
    }
}

void PrunedPathSearch::dropAdditionalNodes(qsizetype countBefore)
{
    if (additionalNodes.size() == countBefore)
        return;
    additionalNodes.resize(countBefore);
    keptNodes.reset();
}

const NodeOnNet *PrunedPathSearch::firstKeptNode()
{
    if (!keptNodes)
        keptNodes = paths.keepNodes(additionalNodes);
    return *keptNodes;
}

void PrunedPathSearch::keepPath(int lastNet)
{
    if (deepening.keep(steps.size(), additionalNodes.size())) {
        if (kept == Kept::Nothing)
            paths.addUnkept();
        else
            paths.add(steps, lastNet, firstKeptNode(), static_cast<std::size_t>(additionalNodes.size()));
        if (kept == Kept::Crossings && held)
            keepPositions();
    }
    if (deepening.isComplete())
        branch.clear(); // ends the search; asking at each of its steps would be felt
}

void PrunedPathSearch::keepPositions()
{
    for (qsizetype crossing = 0; crossing < steps.size(); ++crossing)
        paths.addPosition(held->lowestPosition(crossing));
}
}
