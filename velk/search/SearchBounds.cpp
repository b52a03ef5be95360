#include <velk/search/SearchBounds.h>

#include <limits>

namespace Velk {

namespace {

/// For a net within reach that no branch may enter, whatever is left to it.
constexpr int neverEnough = std::numeric_limits<int>::max();
}

SearchBounds::SearchBounds(const NetlistIndex &netlist, const SearchRules &searchRules,
                           IterativeDeepening &searchDeepening, Interruption &searchInterruption, SearchMemory &memory)
    : index(netlist)
    , rules(searchRules)
    , deepening(searchDeepening)
    , interruption(searchInterruption)
    , sourceNet(netlist.netOfTerminal(searchRules.ends.source))
    , switches(memory.switches)
    , latestLabels(memory.latestLabels)
    , ownAdditionalNodes(memory.ownAdditionalNodes)
    , crossed(memory.crossed)
    , nets(memory.nets)
    , labels(memory.labels)
{
}

void SearchBounds::measure()
{
    ownAdditionalNodes.clear(index.netCount());
    measureSwitches();
    if (deepening.isBounded()) // what a pass cuts off has to be known exactly
        measureBoth();
}

// Breadth first from the nets of the destination.
void SearchBounds::measureSwitches()
{
    switches.clear(index.netCount());
    crossed.clear(index.componentCount());
    nets.clear();
    const auto reach = [this](int net, int count) {
        if (switches.has(net))
            return;
        switches.set(net, count);
        nets.push_back(net);
    };

    const auto lastNets = index.netsOfTerminal(rules.ends.destination);
    for (const int net : lastNets)
        reach(net, 0);
    for (std::size_t next = 0; next < nets.size(); ++next) {
        const int net = nets[next];
        const int count = switches.value(net);
        if (count >= rules.maxNetsSearched)
            return;
        if (net == sourceNet)
            continue; // no branch comes back to it
        if (count > 0 && additionalNodesOn(net) > rules.maxAdditionalNodes)
            switches.set(net, neverEnough); // no branch gets beyond it
        else
            crossFrom(net, 0, [&](int other) { reach(other, count + 1); });
    }
}

void SearchBounds::noteUselessBranch()
{
    if (!isLabelled && ++uselessBranches == nets.size())
        measureBoth();
}

// The same, but a net is looked at again when it is reached with less to collect.
void SearchBounds::measureBoth()
{
    isLabelled = true;
    latestLabels.clear(index.netCount());
    crossed.clear(index.componentCount());
    labels.clear();
    const auto lastNets = index.netsOfTerminal(rules.ends.destination);
    for (const int net : lastNets)
        label(net, 0, 0);
    for (std::size_t next = 0; next < labels.size(); ++next) {
        const Label from = labels[next]; // a copy, since the list grows
        if (from.switches >= rules.maxNetsSearched)
            return;
        if (from.net == sourceNet)
            continue;
        crossFrom(from.net, from.additionalNodes, [&](int other) {
            label(other, from.switches + 1, from.additionalNodes + (other == sourceNet ? 0 : additionalNodesOn(other)));
        });
    }
}

// Called with ever more switches.
void SearchBounds::label(int net, int switchCount, int nodeCount)
{
    if (nodeCount > rules.maxAdditionalNodes)
        return;
    const int latest = latestLabelOf(net);
    if (latest != NetlistIndex::none) {
        Label &known = labels[static_cast<std::size_t>(latest)];
        if (known.additionalNodes <= nodeCount)
            return;
        if (known.switches == switchCount) { // and so not looked at yet
            known.additionalNodes = nodeCount;
            return;
        }
    }
    latestLabels.set(net, static_cast<int>(labels.size()));
    labels.push_back({net, switchCount, nodeCount, latest});
}

void SearchBounds::noteCut(int net, qsizetype switched, qsizetype collected)
{
    for (int i = latestLabelOf(net); i != NetlistIndex::none; i = labelAt(i).earlier)
        deepening.noteCut(switched + labelAt(i).switches, collected + labelAt(i).additionalNodes);
}

// Counted once, since many components may lead to the same net.
int SearchBounds::additionalNodesOn(int net)
{
    if (!ownAdditionalNodes.has(net))
        ownAdditionalNodes.set(net, countAdditionalNodesOn(net));
    return ownAdditionalNodes.value(net);
}

// A node by which the net may be entered is not collected. It belongs to a switchable component, so these are left
// out, even where they are interfaces too.
int SearchBounds::countAdditionalNodesOn(int net) const
{
    int count = 0;
    for (int i = index.firstNode(net); i < index.firstNode(net + 1); ++i) {
        const NumberedNode &node = index.numberedNode(i);
        if (rules.isAdditional(node, SearchRules::nowhere) && !rules.canCross(node, SearchRules::nowhere))
            ++count;
    }
    return count;
}

// Visits all nets from which a component leads to this one, after which so much is collected. A component is crossed
// again only with less to collect, since the first of its nets to be looked at is the best one to come by.
template <typename Visit>
void SearchBounds::crossFrom(int net, int collected, Visit visit)
{
    interruption.work(static_cast<std::size_t>(index.firstNode(net + 1) - index.firstNode(net)));
    for (int i = index.firstNode(net); i < index.firstNode(net + 1); ++i) {
        const NumberedNode &node = index.numberedNode(i);
        const int component = node.component;
        if (!rules.canCross(node, SearchRules::nowhere) ||
            (crossed.has(component) && crossed.value(component) <= collected))
            continue;
        crossed.set(component, collected);
        interruption.work(static_cast<std::size_t>(index.firstPin(component + 1) - index.firstPin(component)));
        for (int pin = index.firstPin(component); pin < index.firstPin(component + 1); ++pin) {
            const int other = index.netOfTerminal(index.terminalOfPin(pin));
            if (other != NetlistIndex::none)
                visit(other);
        }
        const auto hiddenNets = index.hiddenNetsOfComponent(component);
        for (const int hidden : hiddenNets)
            visit(hidden);
    }
}
}
