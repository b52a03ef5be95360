#ifndef VELK_SEARCH_LASTCROSSINGS_H
#define VELK_SEARCH_LASTCROSSINGS_H

#include <velk/index/NetlistIndex.h>
#include <velk/search/Interruption.h>
#include <velk/search/SearchMemory.h>

namespace Velk {

/// What leads from the nets next to the destination to it. Branches come to such a net thousands of times, and most of
/// its rows lead elsewhere, so those that do not are picked out when the first one comes.
class LastCrossings
{
public:
    /// All of them must stay.
    LastCrossings(const NetlistIndex &netlist, const CrossingGraph &crossingGraph, Interruption &searchInterruption,
                  SearchMemory &searchMemory);

    /// Of a net that needs one switch, once the switches of nets are known.
    const NearNet &of(int net);
    /// The rows to the destination, in the order of the net's, those over a junction being rows of their own.
    Elements<CrossingRow> rowsOf(const NearNet &net) const
    {
        return {memory.lastRows.data() + net.firstRow, memory.lastRows.data() + net.endRow};
    }

private:
    NearNet pickOut(int net);
    void pickOutOfJunction(const CrossingRow &entry);

    const NetlistIndex &index;
    const CrossingGraph &graph;
    Interruption &interruption;
    SearchMemory &memory;
};
}

#endif
