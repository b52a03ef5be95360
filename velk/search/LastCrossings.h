#ifndef VELK_SEARCH_LASTCROSSINGS_H
#define VELK_SEARCH_LASTCROSSINGS_H

#include <velk/index/CrossingGraph.h>
#include <velk/search/Interruption.h>
#include <velk/search/SearchMemory.h>
#include <velk/search/SearchRules.h>

namespace Velk {

/// What leads from the nets next to the destination to it. Branches come to such a net thousands of times, and most of
/// its rows lead elsewhere, so those that do not are picked out when the first one comes.
class LastCrossings
{
public:
    /// All of them must stay.
    LastCrossings(const CrossingGraph &crossingGraph, const SearchRules &searchRules, Interruption &searchInterruption,
                  SearchMemory &searchMemory);

    /// Of a net that needs one switch, once the switches of nets are known.
    const NearNet &of(int net) { return pickedOut(net, graph.rowsOf(net)); }
    /// The rows to the destination, in the order of the net's, and those to a junction from which there are such rows.
    Elements<CrossingRow> rowsOf(const NearNet &net) const
    {
        return {memory.lastRows.data() + net.firstRow, memory.lastRows.data() + net.endRow};
    }
    /// Those of a junction, once they were picked out for a net that leads to it.
    Elements<CrossingRow> rowsOfJunction(int junction) { return rowsOf(ofJunction(junction)); }

private:
    const NearNet &ofJunction(int junction)
    {
        return pickedOut(graph.manyNets() + junction, graph.rowsOfJunction(junction));
    }
    const NearNet &pickedOut(int number, Elements<CrossingRow> rows);
    NearNet pickOut(Elements<CrossingRow> rows);
    bool leadsToDestination(const CrossingRow &row);

    const CrossingGraph &graph;
    const SearchRules &rules;
    Interruption &interruption;
    SearchMemory &memory;
};
}

#endif
