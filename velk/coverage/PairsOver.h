#ifndef VELK_COVERAGE_PAIRSOVER_H
#define VELK_COVERAGE_PAIRSOVER_H

#include <velk/search/Interruption.h>
#include <velk/search/SearchMemory.h>
#include <velk/search/SearchRules.h>

#include <functional>
#include <vector>

namespace Velk {

/// The pairs of pins between which a path over a component may lead.
///
/// Such a path comes to the component on one of its nets and leaves it on another one, and does not cross it before the
/// first time and after the last. So of each pin it is found out how far it is from the nearest two nets of the
/// component. Whether the two ways can be one path is not asked.
class PairsOver
{
public:
    /// Nothing of it is kept. The component is one that is excluded by the rules, whose ends play no part.
    PairsOver(int component, const NetlistIndex &index, const CrossingGraph &graph, const SearchRules &rules,
              const std::vector<NumberedNode> &sourcePins, const std::vector<NumberedNode> &dutPins,
              Interruption &interruption);

    /// Whether \a hasPath returns true for a pair, given by its places in the lists. It is asked for those of
    /// the shortest ways first, for each once, until it does.
    bool anyOf(const std::function<bool(qsizetype source, qsizetype dut)> &hasPath) const;

private:
    /// A pin, and the net of the component to which it has a way.
    struct End
    {
        qsizetype pin;
        int net;
    };
    using Ends = std::vector<std::vector<End>>; ///< by the number of switches on that way

    class Surroundings;

    Ends sources;
    Ends duts;
    std::size_t mostSwitches;
};
}

#endif
