#ifndef VELK_ROUTING_SEARCHMEMORY_H
#define VELK_ROUTING_SEARCHMEMORY_H

#include <velk/routing/Marks.h>

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

/// Working memory that a thread keeps from query to query. Nothing in it outlives a query in meaning.
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
}

#endif
