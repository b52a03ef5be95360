#include <velk/search/LastCrossings.h>

#include <algorithm>
#include <cstdlib>

namespace Velk {

LastCrossings::LastCrossings(const CrossingGraph &crossingGraph, const SearchRules &searchRules,
                             Interruption &searchInterruption, SearchMemory &searchMemory)
    : graph(crossingGraph)
    , rules(searchRules)
    , interruption(searchInterruption)
    , memory(searchMemory)
{
    memory.nearNetNumbers.clear(graph.manyNets() + graph.junctionCount());
    memory.nearNets.clear();
    memory.lastRows.clear();
}

const NearNet &LastCrossings::pickedOut(int number, Elements<CrossingRow> rows)
{
    if (!memory.nearNetNumbers.has(number)) {
        memory.nearNets.push_back(pickOut(rows));
        memory.nearNetNumbers.set(number, static_cast<int>(memory.nearNets.size()) - 1);
    }
    return memory.nearNets[static_cast<std::size_t>(memory.nearNetNumbers.value(number))];
}

// Rows over a junction are not multiplied out: of one with thousands of pins on each of two nets there are millions.
NearNet LastCrossings::pickOut(Elements<CrossingRow> rows)
{
    interruption.work(rows.size());
    for (const CrossingRow &row : rows) {
        if (graph.leadsToJunction(row))
            ofJunction(row.exit); // now, so that the rows of the net follow one another
    }
    NearNet result{memory.lastRows.size(), 0, Marks::unmarked};
    for (const CrossingRow &row : rows) {
        if (leadsToDestination(row) && !rules.isExcludedComponent(row.component))
            memory.lastRows.push_back(row);
        const int switches = std::abs(memory.switches.value(row.net)); // also if it is on the branch just now
        if (switches > 0)
            result.switchesBeyond = std::min(result.switchesBeyond, switches);
    }
    result.endRow = memory.lastRows.size();
    return result;
}

bool LastCrossings::leadsToDestination(const CrossingRow &row)
{
    return graph.leadsToJunction(row) ? rowsOfJunction(row.exit).size() > 0 : memory.switches.value(row.net) == 0;
}
}
