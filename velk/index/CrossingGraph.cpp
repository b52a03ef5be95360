#include <velk/index/CrossingGraph.h>

#include <velk/index/NetlistIndex.h>

namespace Velk {

namespace {

/// Of a component that is no junction: as many as a relay with two change-over contacts has.
constexpr int mostPinsInRows = 8;

std::vector<ComponentRole> rolesByType(const NetlistIndex &index, const ComponentRoles &roles)
{
    std::vector<ComponentRole> result;
    const auto &types = index.componentTypes();
    result.reserve(static_cast<std::size_t>(types.size()));
    for (const QString &type : types)
        result.push_back(roles.of(type));
    result[NetlistIndex::unlisted] = {false, false};
    return result;
}
}

class CrossingGraph::Builder
{
public:
    Builder(const NetlistIndex &netlist, CrossingGraph &madeGraph)
        : index(netlist)
        , graph(madeGraph)
        , rolesOfTypes(rolesByType(netlist, madeGraph.componentRoles))
        , junctionNumbers(toSize(netlist.componentCount()), NetlistIndex::none)
    {
    }

    void build()
    {
        numberJunctions();
        graph.nets.reserve(toSize(index.netCount()) + 1);
        graph.rows.reserve(toSize(index.firstNode(index.netCount()))); // most have a way over them, or none
        for (int net = 0; net < index.netCount(); ++net)
            addNet(net);
        graph.nets.push_back(nextNet());
        for (const int component : junctions) {
            graph.junctions.push_back(graph.rows.size());
            addExits(component, NetlistIndex::none, NetlistIndex::none, NetlistIndex::none);
        }
        graph.junctions.push_back(graph.rows.size());
    }

private:
    void numberJunctions()
    {
        for (int component = 0; component < index.componentCount(); ++component) {
            if (!roleOf(index.typeOf(component)).isSwitchable || !isJunction(component))
                continue;
            junctionNumbers[toSize(component)] = static_cast<int>(junctions.size());
            junctions.push_back(component);
        }
    }

    bool isJunction(int component) const
    {
        return index.firstPin(component + 1) - index.firstPin(component) > mostPinsInRows ||
               !index.hiddenNetsOfComponent(component).empty();
    }

    void addNet(int net)
    {
        graph.nets.push_back(nextNet());
        for (int node = index.firstNode(net); node < index.firstNode(net + 1); ++node) {
            const NumberedNode &numbered = index.numberedNode(node);
            const ComponentRole &role = roleOf(numbered.type);
            if (role.isSwitchable)
                addRows(numbered, node, net);
            if (role.isInterface)
                graph.interfaceNodes.push_back({node, numbered.terminal});
            if (role.isInterface && !role.isSwitchable)
                ++graph.nets.back().pureInterfaceNodeCount;
        }
    }

    NumberedNet nextNet() const { return {graph.rows.size(), static_cast<int>(graph.interfaceNodes.size()), 0}; }

    void addRows(const NumberedNode &entry, int node, int net)
    {
        const int junction = junctionNumbers[toSize(entry.component)];
        if (junction != NetlistIndex::none)
            graph.rows.push_back({index.netCount(), entry.component, node, junction});
        else
            addExits(entry.component, node, entry.terminal, net);
    }

    /// Entry node, terminal and net may be none, and so other than each exit's.
    void addExits(int component, int node, int terminal, int net)
    {
        for (int pin = index.firstPin(component); pin < index.firstPin(component + 1); ++pin) {
            const int exit = index.terminalOfPin(pin);
            const int other = index.netOfTerminal(exit);
            if (other != NetlistIndex::none && other != net && exit != terminal)
                graph.rows.push_back({other, component, node, exit});
        }
    }

    const ComponentRole &roleOf(int type) const { return rolesOfTypes[toSize(type)]; }

    const NetlistIndex &index;
    CrossingGraph &graph;
    const std::vector<ComponentRole> rolesOfTypes;
    std::vector<int> junctionNumbers; ///< of each component, or none
    std::vector<int> junctions;       ///< their components
};

CrossingGraph::CrossingGraph(const NetlistIndex &index, const ComponentRoles &roles)
    : componentRoles(roles)
{
    Builder(index, *this).build();
}
}
