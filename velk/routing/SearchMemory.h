#ifndef VELK_ROUTING_SEARCHMEMORY_H
#define VELK_ROUTING_SEARCHMEMORY_H

#include <velk/routing/Marks.h>

#include <vector>

namespace Velk {

/// Working memory that a thread keeps from query to query. Nothing in it outlives a query in meaning.
struct SearchMemory
{
    Marks switches;           ///< of nets: fewest to the destination; unmarked where it is too far
    Marks additionalNodes;    ///< of nets: fewest to be collected on the net and after it
    Marks ownAdditionalNodes; ///< of nets: to be collected on the net itself, as far as they have been counted
    Marks crossed;            ///< components
    Marks onBranch;           ///< nets
    std::vector<int> nets;    ///< to be looked at
};
}

#endif
