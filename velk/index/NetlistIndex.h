#ifndef VELK_INDEX_NETLISTINDEX_H
#define VELK_INDEX_NETLISTINDEX_H

#include <velk/index/CrossingGraphs.h>
#include <velk/index/PropertyIndex.h>
#include <velk/model/EDAComponent.h>
#include <velk/model/EDANet.h>
#include <velk/model/EDAPart.h>
#include <velk/model/TextNumbers.h>

#include <QList>
#include <QMap>
#include <QString>
#include <QVarLengthArray>

#include <functional>
#include <memory>
#include <unordered_map>
#include <vector>

namespace Velk {

/// A node of a net in numbers.
struct NumberedNode
{
    int component; ///< NetlistIndex::none if it is not listed
    int terminal;  ///< NetlistIndex::none if the component's part lacks the pin
    int type;      ///< of the component; NetlistIndex::unlisted if that is not listed
};

/// A netlist in numbers. It is made for the parts, gets the components, then the nets, and is not changed any more,
/// whatever becomes of the elements' contents: it has lists, numbers and texts of its own.
///
/// Nets and components count from 0 in the order given. A terminal is a pin of a component: the terminals of a
/// component are consecutive, in the order of its part's pins, and pins of the same number are the first one's
/// terminal. Nodes are numbered through all nets, those of a net consecutively in its order.
class NetlistIndex
{
public:
    static constexpr int none = -1;
    static constexpr int unlisted = 0; ///< the type of components that are not listed; others count from 1

    /// Part names must be unique. No element, pin or node may ever be null.
    explicit NetlistIndex(const QList<QSharedPointer<EDAPart>> &allParts);

    /// Adds a component under the next number, or puts it into the place of one of the same reference. Other references
    /// must be other ones.
    void setComponent(int number, const QSharedPointer<EDAComponent> &component);
    /// To be called when all components are set, with these as componentWith() looks through them, and their numbers.
    void finishComponents(const QList<QSharedPointer<EDAComponent>> &inOrder, const std::vector<int> &numbers);

    void reserveNets(qsizetype netCount, qsizetype nodeCount);
    /// Adds a net; its nodes are to be added next, in their order.
    void addNet(const QSharedPointer<EDANet> &net);
    void addNode(const NumberedNode &node);
    /// The nets of which joined ones are made, and for each the number of that.
    void setBoardNets(const QList<QSharedPointer<EDANet>> &netsOfBoards, std::vector<int> joinedNets);
    /// Makes what searches by the usual roles need, when all nets are added and while no other thread asks. Without it,
    /// the first such search does.
    void prepareSearches();

    /// False where there are too many pins to be numbered, as of thousands of components with thousands of pins each,
    /// most of which lie on no net. There are no terminals then, and no pins of components.
    bool hasTerminals() const { return terminalsAreNumbered; }

    /// Tells this index from all others, also from one that later has its address.
    quint64 serial() const { return serialNumber; }

    int netCount() const { return static_cast<int>(nodesOfNets.size()); }
    int componentCount() const { return static_cast<int>(components.size()); }

    /// The nodes of a net are firstNode(net) to firstNode(net + 1) - 1.
    int firstNode(int net) const { return firstNodes[toSize(net)]; }
    const NumberedNode &numberedNode(int node) const { return nodes[toSize(node)]; }
    /// Or none.
    int componentNumber(const QString &ref) const { return refs.numberOf(ref); }
    NumberedNode numberedNode(const QString &ref, const QString &pinNumber) const;
    /// The same for the number of a component, or none.
    NumberedNode numberedNode(int component, const QString &pinNumber) const;

    /// The pins of a component, firstPin(component) to firstPin(component + 1) - 1; none if its part is unknown.
    int firstPin(int component) const { return numberedComponents[toSize(component)].firstPin; }
    int terminalOfPin(int pin) const { return pinTerminals[toSize(pin)]; }

    /// The first net that holds the terminal, or none.
    int netOfTerminal(int terminal) const { return terminalNets[toSize(terminal)]; }
    /// All nets that hold the terminal.
    QVarLengthArray<int, 4> netsOfTerminal(int terminal) const;
    /// Those of them besides the first.
    std::vector<int> furtherNetsOfTerminal(int terminal) const { return netsIn(furtherNets, terminal); }
    /// Nets where the component has a node that netOfTerminal() does not lead to: a node that lies on two nets, or one
    /// on a pin that the part lacks.
    std::vector<int> hiddenNetsOfComponent(int component) const { return netsIn(hiddenNets, component); }

    /// The text of each type, the first one being that of unlisted components, and which of them a component has.
    const QList<QString> &componentTypes() const { return types; }
    int typeOf(int component) const { return numberedComponents[toSize(component)].type; }
    /// Equal identifiers have one number, from 0 to identifierCount() - 1; to have none is one too.
    int identifierOf(int component) const { return numberedComponents[toSize(component)].identifier; }
    int identifierCount() const { return identifiers.count(); }

    /// For a search by these roles and, where they are given, these contacts of relays, made when the first one asks;
    /// to be asked only if hasTerminals().
    std::shared_ptr<const CrossingGraph> crossingGraph(const ComponentRoles &roles,
                                                       const QSharedPointer<const RelayContactMap> &relayContacts) const
    {
        return crossingGraphs.graphFor(roles, relayContacts, *this);
    }

    const QSharedPointer<EDAComponent> &component(int number) const { return components[toSize(number)]; }
    const QSharedPointer<EDANet> &net(int number) const { return nets[toSize(number)]; }
    /// Nets before they were joined; none where no boards were joined.
    const QList<QSharedPointer<EDANet>> &boardNets() const { return netsBeforeJoining; }
    int joinedNetOf(qsizetype boardNet) const { return netsAfterJoining.at(static_cast<std::size_t>(boardNet)); }
    /// The number that this pin of the component has in its part.
    const QString &pinNumber(int component, int pin) const
    {
        return parts[toSize(numberedComponents[toSize(component)].part)].numbers.at(pin - firstPin(component));
    }
    /// As the net held it when it was added. The reference is valid as long as the index.
    const QSharedPointer<EDANetNode> &node(int net, int number) const
    {
        return nodesOfNets[toSize(net)].at(number - firstNode(net));
    }

    /// Null where there is none.
    QSharedPointer<EDAComponent> componentOf(const QString &ref) const;
    QSharedPointer<EDAPart> partOf(const QString &name) const;
    /// The first component that has all these properties and is accepted, or null.
    QSharedPointer<EDAComponent> componentWith(
        const QMap<QString, QString> &wanted,
        const std::function<bool(const EDAComponent &)> &isAccepted = [](const EDAComponent &) { return true; }) const
    {
        return componentsByProperty.firstWith(wanted, isAccepted);
    }
    /// A pin of this component, by number or else by name and by what component and part hold at present. Without a
    /// terminal where there is none or was none when the index was made, and for null.
    NumberedNode pinOf(const QSharedPointer<EDAComponent> &component, const QString &pinNumberOrName) const;
    /// The same for the first component with all these properties.
    NumberedNode pinOf(const QMap<QString, QString> &properties, const QString &pinNumberOrName) const;

private:
    /// A part with the position of the first pin of each number.
    struct IndexedPart
    {
        QSharedPointer<EDAPart> part;
        QList<QString> numbers;          ///< by position
        TextNumbers<QString> pinNumbers; ///< as many as differ
        std::vector<int> firstPositions; ///< of these
        std::vector<int> firstOfNumber;  ///< by position

        int positionOf(QStringView number) const;
    };

    struct NumberedComponent
    {
        int type;
        int identifier;
        int part; ///< none if unknown
        int firstPin;
    };

    using NetsByNumber = std::unordered_map<int, std::vector<int>>;

    static std::size_t toSize(int number) { return static_cast<std::size_t>(number); }
    static std::vector<int> netsIn(const NetsByNumber &nets, int number)
    {
        if (nets.empty())
            return {};
        const auto found = nets.find(number);
        return found == nets.end() ? std::vector<int>() : found->second;
    }
    void addPart(const QSharedPointer<EDAPart> &part);
    NumberedComponent numberedComponent(int number, const EDAComponent &component);
    void numberPins();
    void addPinsOf(const IndexedPart &indexedPart);
    void addFurtherNet(const NumberedNode &node, int net);

    const quint64 serialNumber;
    std::vector<IndexedPart> parts;
    TextNumbers<QString> partNames;

    std::vector<QSharedPointer<EDAComponent>> components;
    TextNumbers<QString> refs;
    PropertyIndex componentsByProperty;
    TextNumbers<QString> typeNumbers;
    QList<QString> types = {QString()};
    TextNumbers<QString> identifiers;
    std::vector<NumberedComponent> numberedComponents; ///< and an end, which has the first pin after all
    bool terminalsAreNumbered = false;
    std::vector<int> pinTerminals;

    std::vector<QSharedPointer<EDANet>> nets;
    std::vector<QList<QSharedPointer<EDANetNode>>> nodesOfNets; ///< shared with the nets until these are changed
    QList<QSharedPointer<EDANet>> netsBeforeJoining;
    std::vector<int> netsAfterJoining; ///< by position among these
    std::vector<int> firstNodes = {0}; ///< one more than there are nets
    std::vector<NumberedNode> nodes;
    std::vector<int> terminalNets;
    NetsByNumber furtherNets; ///< of a terminal, besides the first
    NetsByNumber hiddenNets;
    CrossingGraphs crossingGraphs;
};
}

#endif
