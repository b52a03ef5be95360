#include <velk/search/LastCrossings.h>

#include <algorithm>
#include <cstdlib>

namespace Velk {

LastCrossings::LastCrossings(const NetlistIndex &netlist, const CrossingGraph &crossingGraph,
                             Interruption &searchInterruption, SearchMemory &searchMemory)
    : index(netlist)
    , graph(crossingGraph)
    , interruption(searchInterruption)
    , memory(searchMemory)
{
    memory.nearNetNumbers.clear(index.netCount());
    memory.nearNets.clear();
    memory.lastRows.clear();
}

const NearNet &LastCrossings::of(int net)
{
    if (!memory.nearNetNumbers.has(net)) {
        memory.nearNets.push_back(pickOut(net));
        memory.nearNetNumbers.set(net, static_cast<int>(memory.nearNets.size()) - 1);
    }
    return memory.nearNets[static_cast<std::size_t>(memory.nearNetNumbers.value(net))];
}

NearNet LastCrossings::pickOut(int net)
{
    const auto rows = graph.rowsOf(net);
    interruption.work(rows.size());
    NearNet result{memory.lastRows.size(), 0, Marks::unmarked};
    for (const CrossingRow &row : rows) {
        const int switches = std::abs(memory.switches.value(row.net)); // also if it is on the branch just now
        if (switches == 0)
            memory.lastRows.push_back(row);
        else
            result.switchesBeyond = std::min(result.switchesBeyond, switches);
        if (graph.leadsToJunction(row))
            pickOutOfJunction(row);
    }
    result.endRow = memory.lastRows.size();
    return result;
}

void LastCrossings::pickOutOfJunction(const CrossingRow &entry)
{
    const auto exits = graph.rowsOfJunction(entry.exit);
    interruption.work(exits.size());
    const int terminal = index.numberedNode(entry.node).terminal;
    for (const CrossingRow &exit : exits) {
        if (memory.switches.value(exit.net) == 0 && exit.exit != terminal)
            memory.lastRows.push_back({exit.net, exit.component, entry.node, exit.exit});
    }
}
}
