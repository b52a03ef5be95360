#include <velk/index/CrossingGraph.h>

#include <velk/index/NetlistIndex.h>

#include <algorithm>
#include <unordered_map>

namespace Velk {

namespace {

/// Of a component that is no junction: as many as a relay with two change-over contacts has. So many contacts, too, has
/// a terminal that is none.
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
        for (const Junction &junction : junctions) {
            graph.junctions.push_back(graph.rows.size());
            addExits({junction.component, junction.terminal, NetlistIndex::unlisted}, NetlistIndex::none,
                     NetlistIndex::none);
        }
        graph.junctions.push_back(graph.rows.size());
    }

private:
    /// The terminal is none where every terminal of the component leads to it.
    struct Junction
    {
        int component;
        int terminal;
    };

    void numberJunctions()
    {
        for (int component = 0; component < index.componentCount(); ++component) {
            if (!roleOf(index.typeOf(component)).isSwitchable)
                continue;
            if (isKnown(component))
                numberJunctionsOfTerminals(component);
            else if (isJunction(component, index.firstPin(component + 1) - index.firstPin(component)))
                junctionNumbers[toSize(component)] = nextJunction({component, NetlistIndex::none});
        }
    }

    void numberJunctionsOfTerminals(int component)
    {
        for (int pin = index.firstPin(component); pin < index.firstPin(component + 1); ++pin) {
            const int terminal = index.terminalOfPin(pin);
            if (terminal != pin)
                pinsOfSameNumber[terminal].push_back(pin);
        }
        for (int terminal = index.firstPin(component); terminal < index.firstPin(component + 1); ++terminal) {
            if (graph.contactTable->contactsOf(terminal).size() == 0)
                continue;
            if (isJunction(component, static_cast<int>(pinsConnectedTo(terminal).size())))
                junctionsOfTerminals.emplace(terminal, nextJunction({component, terminal}));
        }
    }

    bool isKnown(int component) const { return graph.contactTable && graph.contactTable->isKnown(component); }

    bool isJunction(int component, int exits) const
    {
        return exits > mostPinsInRows || !index.hiddenNetsOfComponent(component).empty();
    }

    int nextJunction(const Junction &junction)
    {
        junctions.push_back(junction);
        return static_cast<int>(junctions.size()) - 1;
    }

    int junctionOf(const NumberedNode &entry) const
    {
        if (!isKnown(entry.component))
            return junctionNumbers[toSize(entry.component)];
        const auto found = junctionsOfTerminals.find(entry.terminal);
        return found == junctionsOfTerminals.end() ? NetlistIndex::none : found->second;
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
        const int junction = junctionOf(entry);
        if (junction != NetlistIndex::none)
            graph.rows.push_back({index.netCount(), entry.component, node, junction});
        else
            addExits(entry, node, net);
    }

    /// The terminal of the entry, node and net may be none, and so other than each exit's.
    void addExits(const NumberedNode &entry, int node, int net)
    {
        if (isKnown(entry.component)) {
            for (const int pin : pinsConnectedTo(entry.terminal))
                addExit(entry, pin, node, net);
            return;
        }
        for (int pin = index.firstPin(entry.component); pin < index.firstPin(entry.component + 1); ++pin)
            addExit(entry, pin, node, net);
    }

    void addExit(const NumberedNode &entry, int pin, int node, int net)
    {
        const int exit = index.terminalOfPin(pin);
        const int other = index.netOfTerminal(exit);
        if (other != NetlistIndex::none && other != net && exit != entry.terminal)
            graph.rows.push_back({other, entry.component, node, exit});
    }

    /// In the order of the part's pins.
    const std::vector<int> &pinsConnectedTo(int terminal)
    {
        connectedPins.clear();
        if (terminal == NetlistIndex::none)
            return connectedPins;
        for (const NumberedContact &contact : graph.contactTable->contactsOf(terminal)) {
            connectedPins.push_back(contact.exit);
            const auto others = pinsOfSameNumber.find(contact.exit);
            if (others != pinsOfSameNumber.end())
                connectedPins.insert(connectedPins.end(), others->second.begin(), others->second.end());
        }
        if (!pinsOfSameNumber.empty())
            std::sort(connectedPins.begin(), connectedPins.end());
        return connectedPins;
    }

    const ComponentRole &roleOf(int type) const { return rolesOfTypes[toSize(type)]; }

    const NetlistIndex &index;
    CrossingGraph &graph;
    const std::vector<ComponentRole> rolesOfTypes;
    std::vector<int> junctionNumbers; ///< of each component, or none
    std::unordered_map<int, int> junctionsOfTerminals;
    std::unordered_map<int, std::vector<int>> pinsOfSameNumber; ///< of a terminal, besides the first
    std::vector<Junction> junctions;
    std::vector<int> connectedPins;
};

CrossingGraph::CrossingGraph(const NetlistIndex &index, const ComponentRoles &roles,
                             const QSharedPointer<const RelayContactMap> &relayContacts)
    : componentRoles(roles)
    , relays(relayContacts)
{
    if (relays)
        contactTable.emplace(index, *relays);
    Builder(index, *this).build();
}
}
