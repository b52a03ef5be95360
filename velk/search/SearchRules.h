#ifndef VELK_SEARCH_SEARCHRULES_H
#define VELK_SEARCH_SEARCHRULES_H

#include <velk/index/NetlistIndex.h>

#include <vector>

namespace Velk {

/// What a query asks for, in the numbers of an index.
struct SearchRules
{
    /// What components of a type are to the search.
    struct Role
    {
        bool isSwitchable;
        bool isInterface;
    };

    int source;          ///< terminal
    int destination;     ///< terminal
    int maxNetsSearched; ///< nets on a branch that are searched further: one more than the limit of switches
    int maxAdditionalNodes;
    std::vector<Role> roles; ///< by type

    /// False where a pin was added to a part after the index had been made.
    bool hasEnds() const { return source != NetlistIndex::none && destination != NetlistIndex::none; }
    const Role &roleOf(const NumberedNode &node) const { return roles[static_cast<std::size_t>(node.type)]; }
    /// Whether a branch that arrives at its net by this terminal collects the node.
    bool isAdditional(const NumberedNode &node, int arrival) const
    {
        return roleOf(node).isInterface &&
               (node.terminal == NetlistIndex::none ||
                (node.terminal != arrival && node.terminal != source && node.terminal != destination));
    }
};
}

#endif
