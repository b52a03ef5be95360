#ifndef VELK_SEARCH_SEARCHMEMORY_H
#define VELK_SEARCH_SEARCHMEMORY_H

#include <velk/index/CrossingGraph.h>
#include <velk/search/FoundPaths.h>
#include <velk/search/Marks.h>

#include <memory>
#include <vector>

namespace Velk {

/// One way in which the destination can be reached from a net: over so many switches, while so many additional nodes
/// are collected on the net and after it. Of the labels of a net, the later ones take more switches and collect less.
struct Label
{
    int net;
    int switches;
    int additionalNodes;
    int earlier; ///< number of the label of the same net before this one, or none
};

/// A net or a junction next to the destination.
struct NearNet
{
    std::size_t firstRow; ///< of those that lead to it, in SearchMemory::lastRows
    std::size_t endRow;
    int switchesBeyond; ///< the fewest that its other neighbours need, or less
};

/// What a crossing on the branch leaves to a gang of relays.
struct HeldGang
{
    int gang;                ///< none where the component takes no position
    int before;              ///< number of the last crossing before this one with the same gang, or none
    Elements<int> positions; ///< those left, ascending
    bool ownsPositions;      ///< they are the last ones in SearchMemory::commonPositions
};

/// What a query works with. Nothing in it outlives a query in meaning.
struct SearchMemory
{
    Marks switches;     ///< of nets: fewest to the destination, negative on the branch; unmarked where it is too far
    Marks latestLabels; ///< of nets: number of the last label; unmarked where it is too far or collects too much
    Marks crossed;      ///< of junctions: the fewest additional nodes after which one was crossed
    std::vector<Label> labels;
    Marks nearNetNumbers; ///< of nets, and behind them of junctions: in the list
    std::vector<NearNet> nearNets;
    std::vector<CrossingRow> lastRows; ///< those of one net or junction after those of another
    Marks latestCrossings;             ///< of gangs: number of the last crossing of the branch that has it, or none
    std::vector<HeldGang> heldGangs;   ///< by crossings of the branch
    std::vector<std::vector<int>> commonPositions; ///< of contacts of which each has more
    FoundPaths paths;
};

/// The memory that the thread keeps from query to query, for as long as one query takes. One made for it alone where
/// another query has it, or where the thread has released it: static objects are destroyed after those of the main
/// thread, and their destructors may search.
class BorrowedMemory
{
public:
    BorrowedMemory();
    ~BorrowedMemory();
    BorrowedMemory(const BorrowedMemory &other) = delete;
    BorrowedMemory &operator=(const BorrowedMemory &other) = delete;

    SearchMemory &memory() { return *borrowed; }

private:
    std::unique_ptr<SearchMemory> borrowed;
};
}

#endif
