#ifndef VELK_COVERAGE_NUMBEREDPATHS_H
#define VELK_COVERAGE_NUMBEREDPATHS_H

#include <velk/coverage/PathFinder.h>
#include <velk/search/PrunedPathSearch.h>

#include <functional>
#include <memory>
#include <vector>

namespace Velk {

/// On an index: the paths to all DUT pins in one go, and a query for those where that does not tell.
class NumberedPaths : public PathFinder
{
public:
    /// All but the rules have to stay. The index knows all pins.
    NumberedPaths(const NetlistIndex &netlist, const RoutingRules &routingRules,
                  const std::vector<NumberedNode> &sourcePins, const std::vector<NumberedNode> &dutPins,
                  const std::function<bool()> &isCalledOff);

    std::vector<Path> shortestPaths(qsizetype source, const std::vector<qsizetype> &wanted, int without) override;
    Path firstPath(qsizetype source, qsizetype dut, int switches) override;
    bool isOnAnyPath(int component) override;

private:
    /// For the first path to a DUT pin that is still to be set, with one excluded component more, or none.
    SearchRules rulesFrom(qsizetype source, int without) const;
    std::shared_ptr<const Exclusions> exclusionsWith(int component) const;
    Path find(SearchRules searchRules, qsizetype dut);
    bool hasPathOver(int component, qsizetype source, qsizetype dut);
    int terminalOf(qsizetype dut) const { return duts[static_cast<std::size_t>(dut)].terminal; }

    const NetlistIndex &index;
    const std::shared_ptr<const CrossingGraph> graph;
    RoutingRules rules;
    const std::vector<NumberedNode> &sources;
    const std::vector<NumberedNode> &duts;
    Interruption interruption;
};
}

#endif
