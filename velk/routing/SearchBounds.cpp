#include <velk/routing/SearchBounds.h>

#include <functional>
#include <limits>
#include <queue>
#include <utility>

namespace Velk {

namespace {

/// For a net within reach that no branch may enter, whatever is left to it.
constexpr int neverEnough = std::numeric_limits<int>::max();
}

SearchBounds::SearchBounds(const NetlistIndex &netlist, const SearchRules &searchRules, SearchMemory &memory)
    : index(netlist)
    , rules(searchRules)
    , sourceNet(netlist.netOfTerminal(searchRules.source))
    , switches(memory.switches)
    , additionalNodes(memory.additionalNodes)
    , ownAdditionalNodes(memory.ownAdditionalNodes)
    , crossed(memory.crossed)
    , nets(memory.nets)
{
}

// Breadth first from the nets of the destination.
void SearchBounds::measure()
{
    switches.clear(index.netCount());
    ownAdditionalNodes.clear(index.netCount());
    crossed.clear(index.componentCount());
    nets.clear();
    const auto reach = [this](int net, int count) {
        if (switches.has(net))
            return;
        switches.set(net, count);
        nets.push_back(net);
    };

    const auto lastNets = index.netsOfTerminal(rules.destination);
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
            crossFrom(net, [&](int other) { reach(other, count + 1); });
    }
}

void SearchBounds::noteUselessBranch()
{
    if (++uselessBranches == nets.size())
        measureAdditionalNodes();
}

// Nearest first in terms of what has to be collected, from the nets of the destination.
void SearchBounds::measureAdditionalNodes()
{
    areNodesMeasured = true;
    additionalNodes.clear(index.netCount());
    crossed.clear(index.componentCount());
    using CountAndNet = std::pair<int, int>;
    std::priority_queue<CountAndNet, std::vector<CountAndNet>, std::greater<>> waiting;
    const auto reach = [&](int net, int count) {
        if (count > rules.maxAdditionalNodes || (additionalNodes.has(net) && additionalNodes.value(net) <= count))
            return;
        additionalNodes.set(net, count);
        waiting.emplace(count, net);
    };

    const auto lastNets = index.netsOfTerminal(rules.destination);
    for (const int net : lastNets)
        reach(net, 0);
    while (!waiting.empty()) {
        const auto [count, net] = waiting.top();
        waiting.pop();
        if (net == sourceNet || additionalNodes.value(net) < count)
            continue;
        crossFrom(net, [&, collected = count](int other) {
            if (switches.has(other))
                reach(other, collected + (other == sourceNet ? 0 : additionalNodesOn(other)));
        });
    }
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
        if (rules.isAdditional(node, NetlistIndex::none) && !rules.roleOf(node).isSwitchable)
            ++count;
    }
    return count;
}

// Visits all nets from which a component leads to this one. Each component is crossed once, since the first of its nets
// to be looked at is the best one to come by.
template <typename Visit>
void SearchBounds::crossFrom(int net, Visit visit)
{
    for (int i = index.firstNode(net); i < index.firstNode(net + 1); ++i) {
        const NumberedNode &node = index.numberedNode(i);
        const int component = node.component;
        if (!rules.roleOf(node).isSwitchable || crossed.has(component))
            continue;
        crossed.set(component);
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
