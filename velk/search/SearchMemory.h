#ifndef VELK_SEARCH_SEARCHMEMORY_H
#define VELK_SEARCH_SEARCHMEMORY_H

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

/// What a query works with. Nothing in it outlives a query in meaning.
struct SearchMemory
{
    Marks switches;           ///< of nets: fewest to the destination; unmarked where it is too far
    Marks latestLabels;       ///< of nets: number of the last label; unmarked where it is too far or collects too much
    Marks ownAdditionalNodes; ///< of nets: to be collected on the net itself, as far as they have been counted
    Marks crossed;            ///< components
    Marks onBranch;           ///< nets
    std::vector<int> nets;    ///< to be looked at
    std::vector<Label> labels;
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
