#include <velk/search/SearchBounds.h>

#include <functional>
#include <queue>

namespace Velk {

SearchBounds::SearchBounds(const NetlistIndex &netlist, const CrossingGraph &crossingGraph,
                           const SearchRules &searchRules, IterativeDeepening &searchDeepening,
                           Interruption &searchInterruption, SearchMemory &memory)
    : index(netlist)
    , graph(crossingGraph)
    , rules(searchRules)
    , deepening(searchDeepening)
    , interruption(searchInterruption)
    , sourceNet(netlist.netOfTerminal(searchRules.ends.source))
    , furtherSourceNets(netlist.furtherNetsOfTerminal(searchRules.ends.source))
    , switches(memory.switches)
    , latestLabels(memory.latestLabels)
    , crossed(memory.crossed)
    , labels(memory.labels)
{
}

void SearchBounds::measure()
{
    if (rules.exclusions)
        measureSwitches<true>();
    else
        measureSwitches<false>();
    if (deepening.isBounded()) // what a pass cuts off has to be known exactly
        measureBoth();
}

// Breadth first from the nets of the destination. Asking at each row whether it is excluded would be felt.
template <bool hasExclusions>
void SearchBounds::measureSwitches()
{
    switches.clear(graph.manyNets() + 1);
    crossed.clear(graph.junctionCount());
    const auto reach = [this](int net, int count) {
        if (!switches.has(net) && !(hasExclusions && rules.exclusions->hasNet(net)))
            switches.set(net, count);
    };

    const auto lastNets = index.netsOfTerminal(rules.ends.destination);
    for (const int net : lastNets)
        reach(net, 0);
    for (std::size_t next = 0; next < switches.all().size(); ++next) {
        const int net = switches.all()[next];
        const int count = switches.value(net);
        if (count >= rules.maxNetsSearched)
            break;
        if (net == sourceNet)
            continue; // no branch comes back to it
        if (count > 0 && additionalNodesOn(net) > rules.maxAdditionalNodes)
            switches.set(net, neverEnough); // no branch gets beyond it
        else
            crossFrom<hasExclusions>(net, 0, [&](int other) { reach(other, count + 1); });
    }
    switches.set(graph.manyNets(), 1); // what lies behind a junction is seen there
}

void SearchBounds::measureOver(int component, Marks &switchesOver)
{
    measureSwitches<true>();
    switchesOver.clear(graph.manyNets());
    crossed.clear(graph.junctionCount());
    using Reached = std::pair<int, int>; // switches and net
    std::priority_queue<Reached, std::vector<Reached>, std::greater<>> nearest;
    const auto reach = [&](int net, int count) {
        if (count >= switchesOver.value(net) || isLast(net) || rules.isExcludedNet(net))
            return;
        switchesOver.set(net, count);
        nearest.emplace(count, net);
    };
    for (const auto &[net, count] : entriesOf(component))
        reach(net, count);
    while (!nearest.empty()) {
        const auto [count, net] = nearest.top();
        nearest.pop();
        if (count > switchesOver.value(net))
            continue;
        if (count >= rules.maxNetsSearched)
            return;
        if (net != sourceNet && additionalNodesOn(net) <= rules.maxAdditionalNodes)
            crossFrom<true>(net, 0, [&, switches = count + 1](int other) { reach(other, switches); });
    }
}

// The nets from which rows lead over a component, and what it takes from each over it to another one and on to the
// destination.
std::vector<std::pair<int, int>> SearchBounds::entriesOf(int component)
{
    std::vector<int> nets = index.hiddenNetsOfComponent(component);
    for (int pin = index.firstPin(component); pin < index.firstPin(component + 1); ++pin) {
        const int net = index.netOfTerminal(index.terminalOfPin(pin));
        if (net != NetlistIndex::none)
            nets.push_back(net);
    }
    std::sort(nets.begin(), nets.end(),
              [this](int a, int b) { return std::pair(switches.value(a), a) < std::pair(switches.value(b), b); });
    nets.erase(std::unique(nets.begin(), nets.end()), nets.end());
    std::vector<std::pair<int, int>> result;
    for (std::size_t i = 0; nets.size() > 1 && i < nets.size(); ++i) {
        const int best = switches.value(nets[i == 0 ? 1 : 0]);
        if (best < neverEnough && leadsOver(component, nets[i]))
            result.emplace_back(nets[i], best + 1);
    }
    return result;
}

bool SearchBounds::leadsOver(int component, int net)
{
    const auto rows = graph.rowsOf(net);
    interruption.work(rows.size());
    return std::any_of(rows.begin(), rows.end(),
                       [component](const CrossingRow &row) { return row.component == component; });
}

void SearchBounds::noteUselessBranch()
{
    if (!isLabelled && ++uselessBranches == switches.all().size())
        measureBoth();
}

void SearchBounds::measureBoth()
{
    if (rules.exclusions)
        measureLabels<true>();
    else
        measureLabels<false>();
}

// The same, but a net is looked at again when it is reached with less to collect.
template <bool hasExclusions>
void SearchBounds::measureLabels()
{
    isLabelled = true;
    latestLabels.clear(index.netCount());
    crossed.clear(graph.junctionCount());
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
        crossFrom<hasExclusions>(from.net, from.additionalNodes, [&](int other) {
            label(other, from.switches + 1, from.additionalNodes + additionalNodesOn(other));
        });
    }
}

// Called with ever more switches.
void SearchBounds::label(int net, int switchCount, int nodeCount)
{
    if (nodeCount > rules.maxAdditionalNodes || rules.isExcludedNet(net))
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

// Visits all nets from which a component leads to this one, after which so much is collected.
template <bool hasExclusions, typename Visit>
void SearchBounds::crossFrom(int net, int collected, Visit visit)
{
    const auto rows = graph.rowsOf(net);
    interruption.work(rows.size());
    for (const CrossingRow &row : rows) {
        if (hasExclusions && rules.exclusions->hasComponent(row.component))
            continue;
        if (graph.leadsToJunction(row))
            crossJunction(row, collected, visit);
        else
            visit(row.net); // a component that is no junction leads back as well
    }
}

// A junction is crossed again only with less to collect, since the first of its nets to be looked at is the best one to
// come by.
template <typename Visit>
void SearchBounds::crossJunction(const CrossingRow &entry, int collected, Visit visit)
{
    const int junction = entry.exit;
    if (crossed.has(junction) && crossed.value(junction) <= collected)
        return;
    crossed.set(junction, collected);
    const auto exits = graph.rowsOfJunction(junction);
    interruption.work(exits.size());
    for (const CrossingRow &exit : exits)
        visit(exit.net);
    const auto hiddenNets = index.hiddenNetsOfComponent(entry.component);
    for (const int hidden : hiddenNets)
        visit(hidden);
}
}
