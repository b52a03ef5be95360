#ifndef VELK_COVERAGE_PATHTREE_H
#define VELK_COVERAGE_PATHTREE_H

#include <velk/search/HeldPositions.h>
#include <velk/search/Interruption.h>
#include <velk/search/SearchRules.h>

#include <optional>
#include <vector>

namespace Velk {

/// Paths from a source pin to the nets of some terminals, with as few switches as there can be.
///
/// The limits and exclusions hold for them, but not what relays can do together: it is asked of a path afterwards.
/// Where it is possible, no other one is shorter; where it is not, another one may be. What is not reached has no path.
class PathTree
{
public:
    static constexpr int none = -1;

    /// The first three have to stay. The destination of the rules plays no part.
    PathTree(const NetlistIndex &netlist, const CrossingGraph &crossingGraph, const SearchRules &searchRules,
             const std::vector<int> &wantedTerminals, Interruption &interruption);

    /// The number of the path to this terminal, which has to be a wanted one, or none.
    int pathTo(int terminal) const;
    /// Whether some state of the relays makes the path.
    bool isPossible(int path);
    /// The components that it crosses, from the last to the first.
    std::vector<int> componentsOf(int path) const;

private:
    /// At a net, over the last step of a path to it.
    struct Arrival
    {
        int net;
        int switches;
        int additionalNodes; ///< on this net and before; more than the limit where no path leads on
        int before;          ///< number of the arrival at the net before, or none
        int component;       ///< that is crossed from there
        Crossing crossing;
    };

    void want(const std::vector<int> &terminals);
    void grow(Interruption &interruption);
    void crossFrom(int arrival, Interruption &interruption);
    void crossJunction(int arrival, const CrossingRow &entry, Interruption &interruption);
    void reach(int net, int before, int component, const Crossing &crossing);
    void add(const Arrival &arrival);
    int additionalNodesOn(int net, int arrivalTerminal, int mostNodes) const;
    bool crossesBack(const Arrival &arrival) const;
    const Arrival &at(int number) const { return arrivals[static_cast<std::size_t>(number)]; }

    const NetlistIndex &index;
    const CrossingGraph &graph;
    const SearchRules &rules;
    BorrowedMemory borrowed;
    std::optional<HeldPositions> held; ///< where contacts of relays are given
    std::vector<Arrival> arrivals;     ///< with ever more switches
    Marks &firstArrivals;              ///< of nets: number of the one with the fewest switches
    Marks &latestArrivals;             ///< of nets: number of the one with the fewest additional nodes
    Marks &crossed;                    ///< of junctions: the fewest additional nodes after which one was crossed
    Marks &wantedNets;
    std::size_t missingNets = 0; ///< of those that are wanted
};
}

#endif
