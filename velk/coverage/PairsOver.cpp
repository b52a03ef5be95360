#include <velk/coverage/PairsOver.h>

#include <algorithm>
#include <set>
#include <utility>

namespace Velk {

/// The nets around a component, by the fewest switches to the nearest net of it and to the nearest other one.
class PairsOver::Surroundings
{
public:
    Surroundings(const NetlistIndex &netlist, const CrossingGraph &crossingGraph, const SearchRules &searchRules,
                 const std::vector<NumberedNode> &sourcePins, Interruption &searchInterruption)
        : index(netlist)
        , graph(crossingGraph)
        , rules(searchRules)
        , interruption(searchInterruption)
        , nearest(borrowed.memory().switches)
        , secondNearest(borrowed.memory().latestLabels)
        , crossed(borrowed.memory().crossed)
        , crossedAgain(borrowed.memory().nearNetNumbers)
    {
        for (const NumberedNode &pin : sourcePins) {
            const auto further = index.furtherNetsOfTerminal(pin.terminal);
            furtherSourceNets.insert(further.begin(), further.end());
        }
    }

    /// Breadth first from the nets of the component, which is not crossed.
    void explore(int component)
    {
        nearest.clear(index.netCount());
        secondNearest.clear(index.netCount());
        crossed.clear(graph.junctionCount());
        crossedAgain.clear(graph.junctionCount());
        reachNetsOf(component);
        for (std::size_t next = 0; next < places.size(); ++next) {
            const Place from = places[next];                // a copy, since the list grows
            if (from.switches + 1 >= rules.maxNetsSearched) // the component is switched too
                return;
            if (canBePassed(from.net))
                crossFrom(from);
        }
    }

    /// Adds the pin of this terminal by its ways to these nets.
    void addEnd(qsizetype pin, const QVarLengthArray<int, 4> &nets, Ends &ends) const
    {
        for (const int net : nets) {
            for (const Marks *marks : {&nearest, &secondNearest}) {
                if (!marks->has(net))
                    continue;
                const Place &place = places[static_cast<std::size_t>(marks->value(net))];
                const auto switches = static_cast<std::size_t>(place.switches);
                ends.resize(std::max(ends.size(), switches + 1));
                ends[switches].push_back({pin, place.ofComponent});
            }
        }
    }

private:
    struct Place
    {
        int net;
        int switches;
        int ofComponent; ///< the net of the component from which it is reached
    };

    void reachNetsOf(int component)
    {
        const ContactTable *contacts = graph.contacts();
        for (int pin = index.firstPin(component); pin < index.firstPin(component + 1); ++pin) {
            const int terminal = index.terminalOfPin(pin);
            if (contacts && contacts->isKnown(component) && contacts->contactsOf(terminal).size() == 0)
                continue;
            for (const int net : index.netsOfTerminal(terminal))
                reach(net, 0, net);
        }
        for (const int net : index.hiddenNetsOfComponent(component))
            reach(net, 0, net);
    }

    void reach(int net, int switches, int ofComponent)
    {
        if (rules.isExcludedNet(net) || !isNewFrom(net, ofComponent))
            return;
        (nearest.has(net) ? secondNearest : nearest).set(net, static_cast<int>(places.size()));
        places.push_back({net, switches, ofComponent});
    }

    bool isNewFrom(int net, int ofComponent) const
    {
        if (!nearest.has(net))
            return true;
        return !secondNearest.has(net) &&
               places[static_cast<std::size_t>(nearest.value(net))].ofComponent != ofComponent;
    }

    /// A net with too many additional nodes can only be the first or the last one. Of a source that lies on several
    /// nets it is not counted how often.
    bool canBePassed(int net) const
    {
        return graph.pureInterfaceNodeCount(net) <= rules.maxAdditionalNodes || furtherSourceNets.count(net) > 0;
    }

    /// In both directions.
    void crossFrom(const Place &from)
    {
        const auto rows = graph.rowsOf(from.net);
        interruption.work(rows.size());
        for (const CrossingRow &row : rows) {
            if (rules.isExcludedComponent(row.component))
                continue;
            if (graph.leadsToJunction(row))
                crossJunction(from, row);
            else
                reach(row.net, from.switches + 1, from.ofComponent);
        }
    }

    void crossJunction(const Place &from, const CrossingRow &entry)
    {
        const int junction = entry.exit;
        const bool isAgain = crossed.has(junction);
        if (isAgain && (crossedAgain.has(junction) || crossed.value(junction) == from.ofComponent))
            return;
        (isAgain ? crossedAgain : crossed).set(junction, from.ofComponent);
        const auto exits = graph.rowsOfJunction(junction);
        interruption.work(exits.size());
        for (const CrossingRow &exit : exits)
            reach(exit.net, from.switches + 1, from.ofComponent);
        const auto hiddenNets = index.hiddenNetsOfComponent(entry.component);
        for (const int hidden : hiddenNets)
            reach(hidden, from.switches + 1, from.ofComponent);
    }

    const NetlistIndex &index;
    const CrossingGraph &graph;
    const SearchRules &rules;
    Interruption &interruption;
    std::set<int> furtherSourceNets;
    BorrowedMemory borrowed;
    Marks &nearest;       ///< of nets: number of the place with the fewest switches
    Marks &secondNearest; ///< the same from another net of the component
    Marks &crossed;       ///< of junctions: the net of the component from which it was crossed first
    Marks &crossedAgain;  ///< the same from another one
    std::vector<Place> places;
};

PairsOver::PairsOver(int component, const NetlistIndex &index, const CrossingGraph &graph, const SearchRules &rules,
                     const std::vector<NumberedNode> &sourcePins, const std::vector<NumberedNode> &dutPins,
                     Interruption &interruption)
    : mostSwitches(static_cast<std::size_t>(std::max(rules.maxNetsSearched, 0)))
{
    Surroundings surroundings(index, graph, rules, sourcePins, interruption);
    surroundings.explore(component);
    for (std::size_t i = 0; i < sourcePins.size(); ++i) {
        const int net = index.netOfTerminal(sourcePins[i].terminal);
        if (net != NetlistIndex::none)
            surroundings.addEnd(static_cast<qsizetype>(i), {net}, sources);
    }
    for (std::size_t i = 0; i < dutPins.size(); ++i)
        surroundings.addEnd(static_cast<qsizetype>(i), index.netsOfTerminal(dutPins[i].terminal), duts);
}

bool PairsOver::anyOf(const std::function<bool(qsizetype source, qsizetype dut)> &hasPath) const
{
    std::set<std::pair<qsizetype, qsizetype>> asked;
    const auto isNewWithPath = [&](const End &source, const End &dut) {
        return source.net != dut.net && asked.insert({source.pin, dut.pin}).second && hasPath(source.pin, dut.pin);
    };
    for (std::size_t switches = 1; switches <= mostSwitches && switches < sources.size() + duts.size(); ++switches) {
        for (std::size_t before = 0; before < std::min(switches, sources.size()); ++before) {
            const std::size_t after = switches - 1 - before;
            if (after >= duts.size())
                continue;
            for (const End &source : sources[before]) {
                const auto isWanted = [&](const End &dut) { return isNewWithPath(source, dut); };
                if (std::any_of(duts[after].cbegin(), duts[after].cend(), isWanted))
                    return true;
            }
        }
    }
    return false;
}
}
