#ifndef VELK_MODEL_NETLISTINDEX_H
#define VELK_MODEL_NETLISTINDEX_H

#include <velk/model/EDAComponent.h>
#include <velk/model/EDANet.h>
#include <velk/model/EDAPart.h>

#include <QHash>
#include <QList>
#include <QMap>
#include <QMultiHash>
#include <QString>

#include <utility>
#include <vector>

namespace Velk {

/// A netlist in numbers, made once and never changed.
///
/// Nets and components count from 0 in the order given. A terminal is a pin of a component: the terminals of a
/// component are consecutive, in the order of its part's pins, and pins of the same number are the first one's
/// terminal. Nodes are numbered through all nets, those of a net consecutively in its order.
class NetlistIndex
{
public:
    static constexpr int none = -1;

    NetlistIndex(const QList<QSharedPointer<EDANet>> &allNets,
                 const QMap<QString, QSharedPointer<EDAComponent>> &componentsByRef,
                 const QMap<QString, QSharedPointer<EDAPart>> &partsByName);

    int netCount() const { return static_cast<int>(nets.size()); }
    int componentCount() const { return static_cast<int>(components.size()); }

    /// The nodes of a net are firstNode(net) to firstNode(net + 1) - 1.
    int firstNode(int net) const { return firstNodes[toSize(net)]; }
    int componentOfNode(int node) const { return nodeComponents[toSize(node)]; } ///< none if it is not listed
    int terminalOfNode(int node) const { return nodeTerminals[toSize(node)]; }   ///< none if its part lacks the pin

    /// The pins of a component, firstPin(component) to firstPin(component + 1) - 1; none if its part is unknown.
    int firstPin(int component) const { return firstPins[toSize(component)]; }
    int terminalOfPin(int pin) const { return pinTerminals[toSize(pin)]; }

    /// The first net that holds the terminal, or none.
    int netOfTerminal(int terminal) const { return terminalNets[toSize(terminal)]; }
    /// All nets that hold the terminal.
    QList<int> netsOfTerminal(int terminal) const;
    /// The terminal of a listed component's pin, or none.
    int terminal(const QString &ref, const QString &pinNumber) const;

    /// The first component that has all these properties, or null.
    QSharedPointer<EDAComponent> componentWith(const QMap<QString, QString> &properties) const;

    /// Nets where the component has a node that netOfTerminal() does not lead to: a node that lies on two nets, or one
    /// on a pin that the part lacks.
    QList<int> hiddenNetsOfComponent(int component) const { return hiddenNets.values(component); }

    /// Distinct component types, and which of them a component has.
    const QList<QString> &componentTypes() const { return types; }
    int typeOf(int component) const { return typeIds[toSize(component)]; }

    const QSharedPointer<EDAComponent> &component(int number) const { return components.at(number); }
    const QSharedPointer<EDANetNode> &node(int net, int number) const
    {
        return nets.at(net)->nodes.at(number - firstNode(net));
    }

private:
    static std::size_t toSize(int number) { return static_cast<std::size_t>(number); }
    void addComponent(const QSharedPointer<EDAComponent> &component, const QSharedPointer<EDAPart> &part);
    void addNet(const QSharedPointer<EDANet> &net, int number);

    QList<QSharedPointer<EDANet>> nets;
    QList<QSharedPointer<EDAComponent>> components;
    QHash<QString, int> numbersByRef;
    QHash<std::pair<QString, QString>, std::vector<int>> numbersByProperty; ///< ascending, by key and value
    QHash<QString, int> typesByText;
    QList<QString> types;
    std::vector<int> typeIds;
    QHash<const EDAPart *, QHash<QString, int>> pinsByPart; ///< first position of each pin number
    std::vector<QSharedPointer<EDAPart>> partsOfComponents; ///< null if unknown
    std::vector<int> firstPins;
    std::vector<int> pinTerminals;
    std::vector<int> terminalNets;
    QMultiHash<int, int> furtherNets; ///< of a terminal, besides the first
    QMultiHash<int, int> hiddenNets;
    std::vector<int> firstNodes;
    std::vector<int> nodeComponents;
    std::vector<int> nodeTerminals;
};
}

#endif
