#include <velk/routing/PrunedPathSearch.h>

namespace Velk {

namespace {

/// Marks for nets or components that are all cleared at once. A query touches few of them, so clearing one by one, or
/// a new table for each query, would cost more than the search.
class Marks
{
public:
    void clear(int size)
    {
        if (rounds.size() < static_cast<std::size_t>(size)) {
            rounds.resize(static_cast<std::size_t>(size), 0);
            values.resize(static_cast<std::size_t>(size), 0);
        }
        ++round;
    }
    bool has(int number) const { return rounds[static_cast<std::size_t>(number)] == round; }
    int value(int number) const { return values[static_cast<std::size_t>(number)]; }
    void set(int number, int value = 0)
    {
        rounds[static_cast<std::size_t>(number)] = round;
        values[static_cast<std::size_t>(number)] = value;
    }
    void unset(int number) { rounds[static_cast<std::size_t>(number)] = 0; }

private:
    std::vector<quint64> rounds;
    std::vector<int> values;
    quint64 round = 0;
};

/// Working memory that a thread keeps from query to query; nothing in it outlives a query in meaning.
struct Scratch
{
    Marks distances; ///< of nets, in switches to the destination; unmarked where it is too far
    Marks onBranch;  ///< nets
    Marks crossed;   ///< components, while distances are measured
    std::vector<int> queue;
};
thread_local Scratch scratch;
}

PrunedPathSearch::PrunedPathSearch(const NetlistIndex &netlist, const PrunedSearchRules &searchRules,
                                   int sourceTerminal, int destinationTerminal)
    : index(netlist)
    , rules(searchRules)
    , source(sourceTerminal)
    , destination(destinationTerminal)
{
}

QList<RoutingPath> PrunedPathSearch::run()
{
    scratch.onBranch.clear(index.netCount());
    measureDistances();
    enterSourceNet();
    while (!branch.empty()) {
        const Level &level = branch.back();
        if (level.nextPin < level.endPin)
            crossToNextPin();
        else if (level.nextNode < index.firstNode(level.net + 1))
            enterNextComponent();
        else
            leaveNet();
    }
    return paths;
}

// Breadth first from the nets of the destination, as far as a path can be long.
void PrunedPathSearch::measureDistances()
{
    scratch.distances.clear(index.netCount());
    scratch.crossed.clear(index.componentCount());
    scratch.queue.clear();
    const auto lastNets = index.netsOfTerminal(destination);
    for (const int net : lastNets) {
        scratch.distances.set(net, 0);
        scratch.queue.push_back(net);
    }
    for (std::size_t next = 0; next < scratch.queue.size(); ++next) {
        const int net = scratch.queue[next];
        const int distance = scratch.distances.value(net);
        if (distance >= rules.maxNetsSearched)
            return;
        measureAcross(net, distance + 1);
    }
}

// One step back: to all nets from which a component leads to this one. Each component is crossed once, from the
// nearest of its nets.
void PrunedPathSearch::measureAcross(int net, int distance)
{
    const auto reach = [distance](int other) {
        if (other == NetlistIndex::none || scratch.distances.has(other))
            return;
        scratch.distances.set(other, distance);
        scratch.queue.push_back(other);
    };
    for (int node = index.firstNode(net); node < index.firstNode(net + 1); ++node) {
        const int component = index.numberedNode(node).component;
        if (component == NetlistIndex::none || scratch.crossed.has(component) ||
            !rules.isSwitchable[static_cast<std::size_t>(index.typeOf(component))])
            continue;
        scratch.crossed.set(component);
        for (int pin = index.firstPin(component); pin < index.firstPin(component + 1); ++pin)
            reach(index.netOfTerminal(index.terminalOfPin(pin)));
        const auto hiddenNets = index.hiddenNetsOfComponent(component);
        for (const int hidden : hiddenNets)
            reach(hidden);
    }
}

void PrunedPathSearch::enterSourceNet()
{
    const int net = index.netOfTerminal(source);
    if (net == NetlistIndex::none || !scratch.distances.has(net))
        return;
    if (scratch.distances.value(net) == 0) {
        addPath();
        return;
    }
    if (rules.maxNetsSearched < 1 || rules.maxAdditionalNodes < 0)
        return;
    scratch.onBranch.set(net);
    branch.push_back(Level{net, source, index.firstNode(net), NetlistIndex::none, NetlistIndex::none, 0, 0, {}});
}

void PrunedPathSearch::crossToNextPin()
{
    Level &level = branch.back();
    const int exit = index.terminalOfPin(level.nextPin++);
    const int net = exit == level.entry ? NetlistIndex::none : index.netOfTerminal(exit);
    if (net == NetlistIndex::none || !scratch.distances.has(net) || scratch.onBranch.has(net))
        return;
    const int distance = scratch.distances.value(net);
    if (static_cast<qint64>(branch.size()) + distance > rules.maxNetsSearched)
        return;
    if (distance == 0) {
        addPath();
        return;
    }
    auto additionalNodes = additionalNodesWith(net, exit);
    if (additionalNodes.size() > rules.maxAdditionalNodes)
        return;
    scratch.onBranch.set(net);
    branch.push_back(Level{net, exit, index.firstNode(net), NetlistIndex::none, NetlistIndex::none, 0, 0,
                           std::move(additionalNodes)});
}

void PrunedPathSearch::enterNextComponent()
{
    Level &level = branch.back();
    const int node = level.nextNode++;
    const int component = index.numberedNode(node).component;
    const int entry = index.numberedNode(node).terminal;
    const bool isArrival = entry == level.arrival; // equal nodes are one terminal
    if (component == NetlistIndex::none || isArrival ||
        !rules.isSwitchable[static_cast<std::size_t>(index.typeOf(component))])
        return;
    level.component = component;
    level.entry = entry;
    level.nextPin = index.firstPin(component);
    level.endPin = index.firstPin(component + 1);
}

void PrunedPathSearch::leaveNet()
{
    scratch.onBranch.unset(branch.back().net);
    branch.pop_back();
}

void PrunedPathSearch::addPath()
{
    RoutingPath path;
    path.switchingComponents.reserve(static_cast<qsizetype>(branch.size()));
    for (const Level &level : branch)
        path.switchingComponents.append(index.component(level.component));
    if (!branch.empty())
        path.additionalNodes = branch.back().additionalNodes;
    paths.append(std::move(path));
}

QList<QSharedPointer<EDANetNode>> PrunedPathSearch::additionalNodesWith(int net, int arrival) const
{
    auto result = branch.back().additionalNodes;
    for (int node = index.firstNode(net); node < index.firstNode(net + 1); ++node) {
        const int component = index.numberedNode(node).component;
        if (component == NetlistIndex::none || !rules.isInterface[static_cast<std::size_t>(index.typeOf(component))])
            continue;
        const int terminal = index.numberedNode(node).terminal;
        if (terminal == NetlistIndex::none || (terminal != arrival && terminal != source && terminal != destination))
            result.append(index.node(net, node));
    }
    return result;
}
}
