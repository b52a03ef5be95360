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
    /// The index, the function and the terminals, all of which the index knows, have to stay.
    NumberedPaths(const NetlistIndex &netlist, const RoutingRules &routingRules, const NumberedNode &source,
                  const std::vector<int> &dutTerminals, const std::function<bool()> &isCalledOff);

    std::vector<Path> shortestPaths(const std::vector<qsizetype> &wanted, int without) override;
    Path firstPath(qsizetype dut) override;
    bool hasPathOver(int component, qsizetype dut) override;

private:
    Path find(const SearchRules &searchRules, qsizetype dut);
    SearchRules rulesWithout(int component) const;
    int terminalOf(qsizetype dut) const { return terminals[static_cast<std::size_t>(dut)]; }

    const NetlistIndex &index;
    const std::shared_ptr<const CrossingGraph> graph;
    const SearchRules rules; ///< for the first path; the destination is still to be set
    const std::vector<int> &terminals;
    Interruption interruption;
};
}

#endif
