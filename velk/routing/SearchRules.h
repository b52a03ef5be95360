#ifndef VELK_ROUTING_SEARCHRULES_H
#define VELK_ROUTING_SEARCHRULES_H

#include <velk/model/NetlistIndex.h>

#include <vector>

namespace Velk {

/// What a query asks for, in the numbers of an index.
struct SearchRules
{
    int source;          ///< terminal
    int destination;     ///< terminal
    int maxNetsSearched; ///< nets on a branch that are searched further: one more than the limit of switches
    int maxAdditionalNodes;
    std::vector<bool> switchableTypes; ///< by type
    std::vector<bool> interfaceTypes;  ///< by type

    bool isSwitchable(const NetlistIndex &index, int component) const
    {
        return switchableTypes[static_cast<std::size_t>(index.typeOf(component))];
    }
    bool isInterface(const NetlistIndex &index, int component) const
    {
        return interfaceTypes[static_cast<std::size_t>(index.typeOf(component))];
    }
    /// Whether a net that holds this node of an interface component connects it as a further one.
    bool isAdditional(const NumberedNode &node, int arrival) const
    {
        return node.terminal == NetlistIndex::none ||
               (node.terminal != arrival && node.terminal != source && node.terminal != destination);
    }
};
}

#endif
