#ifndef VELK_INDEX_CROSSINGGRAPH_H
#define VELK_INDEX_CROSSINGGRAPH_H

#include <velk/index/ComponentRoles.h>
#include <velk/index/ContactTable.h>
#include <velk/index/Elements.h>
#include <velk/model/RelayContacts.h>

#include <QSharedPointer>

#include <cstddef>
#include <optional>
#include <vector>

namespace Velk {

class NetlistIndex;

/// A way from one net to another over a switchable component.
struct CrossingRow
{
    int net;       ///< to which it leads, or CrossingGraph::manyNets()
    int component; ///< the one to switch on
    int node;      ///< of the first net, by which the component is entered
    int exit;      ///< terminal by which it is left; with manyNets() the number of a junction
};

/// A node whose component is an interface.
struct InterfaceNode
{
    int node;
    int terminal;
};

/// A netlist as a search sees it that knows what is switchable and what an interface: which net leads to which others,
/// in rows that follow one another. They are in the order of the net's nodes, for a node in that of the component's
/// pins. A row leads neither back to its net nor out of the terminal by which the component was entered.
///
/// Most switches have a few pins and each a row for every way over them. One of many pins, on as many nets, would have
/// the square of their number; it is a junction instead, to which a net has one row, and which has a row for each exit.
/// So is one with hidden nets (see NetlistIndex), from which rows lead that have none in the other direction.
///
/// Where the contacts of relays are given, these have rows over their contacts alone, whichever position closes them. A
/// terminal of many contacts, as the common one of a multiplexer, is a junction then, and so is each of a relay with
/// hidden nets.
class CrossingGraph
{
public:
    /// Without \a relayContacts, all relays connect all their pins.
    CrossingGraph(const NetlistIndex &index, const ComponentRoles &roles,
                  const QSharedPointer<const RelayContactMap> &relayContacts);

    bool isFor(const ComponentRoles &roles, const QSharedPointer<const RelayContactMap> &relayContacts) const
    {
        return relays.data() == relayContacts.data() && componentRoles == roles;
    }

    /// Null where no contacts are given.
    const ContactTable *contacts() const { return contactTable ? &*contactTable : nullptr; }

    Elements<CrossingRow> rowsOf(int net) const
    {
        return {rows.data() + nets[toSize(net)].firstRow, rows.data() + nets[toSize(net) + 1].firstRow};
    }
    /// Instead of a number of a net: the row leads to a junction.
    int manyNets() const { return static_cast<int>(nets.size()) - 1; }
    bool leadsToJunction(const CrossingRow &row) const { return row.net == manyNets(); }
    /// Its exits. By which node it is entered tells the row that leads to it, whose terminal is among them here.
    Elements<CrossingRow> rowsOfJunction(int junction) const
    {
        return {rows.data() + junctions[toSize(junction)], rows.data() + junctions[toSize(junction) + 1]};
    }
    int junctionCount() const { return static_cast<int>(junctions.size()) - 1; }

    /// Those of the net, in its order.
    Elements<InterfaceNode> interfaceNodesOf(int net) const
    {
        const InterfaceNode *const all = interfaceNodes.data();
        return {all + nets[toSize(net)].firstInterfaceNode, all + nets[toSize(net) + 1].firstInterfaceNode};
    }
    /// How many of these no branch can enter the net by: all whose component is not switchable too.
    int pureInterfaceNodeCount(int net) const { return nets[toSize(net)].pureInterfaceNodeCount; }

private:
    struct NumberedNet
    {
        std::size_t firstRow;
        int firstInterfaceNode;
        int pureInterfaceNodeCount;
    };

    class Builder;

    static std::size_t toSize(int number) { return static_cast<std::size_t>(number); }

    const ComponentRoles componentRoles;
    const QSharedPointer<const RelayContactMap> relays; ///< kept, so that no other gets its address
    std::optional<ContactTable> contactTable;
    std::vector<NumberedNet> nets;      ///< and one more
    std::vector<CrossingRow> rows;      ///< of the nets, then of the junctions
    std::vector<std::size_t> junctions; ///< first row of each, and one more
    std::vector<InterfaceNode> interfaceNodes;
};
}

#endif
