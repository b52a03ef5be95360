#ifndef VELK_CHECK_CHECKEDSYSTEM_H
#define VELK_CHECK_CHECKEDSYSTEM_H

#include <velk/naming/References.h>
#include <velk/provider/MultipleEDAProvider.h>

#include <QList>
#include <QStringList>

#include <vector>

namespace Velk {

/// What the components of a system are, by types in upper or lower case.
struct ComponentTypes
{
    QStringList connectors;
    QStringList switchables;
    QStringList interfaces;
    QStringList duts;
    QStringList passives; ///< of the switchable ones

    bool isConnector(const EDAComponent &component) const;
    bool isSwitchable(const EDAComponent &component) const;
    /// Switchable and not passive.
    bool isRelay(const EDAComponent &component) const;
    /// All of the above and that of sources.
    QStringList known() const;
};

/// The netlists of a system in numbers: components in the order of their references, nets as they are on their boards,
/// in the order in which they were read.
class CheckedSystem
{
public:
    /// A pin that a net names.
    struct Node
    {
        int component;
        QString pin;
        int net;
    };
    /// The nodes of a component by pin, then net.
    struct Nodes
    {
        const Node *first;
        const Node *last;
        const Node *begin() const { return first; }
        const Node *end() const { return last; }
    };

    /// \a joined has to stay.
    CheckedSystem(const MultipleEDAProvider &joined, const ComponentTypes &componentTypes);

    const MultipleEDAProvider &netlists() const { return provider; }
    const ComponentTypes &types() const { return typesOfComponents; }

    int componentCount() const { return static_cast<int>(components.size()); }
    const EDAComponent &component(int number) const { return *components.at(number); }
    const QList<QSharedPointer<EDAComponent>> &allComponents() const { return components; }
    /// The position of its netlist, from 1 on.
    int netlistOfComponent(int number) const { return netlistOf(component(number).ref); }
    Nodes nodesOf(int component) const;

    int netCount() const { return static_cast<int>(nets.size()); }
    const EDANet &net(int number) const { return *nets.at(number); }
    /// The same number for nets that are one when the netlists are plugged together.
    int joinedNet(int net) const { return static_cast<int>(provider.joinedNetOf(net)); }

    QStringList refsOf(const QList<int> &componentNumbers) const;

private:
    void collectNodes();

    const MultipleEDAProvider &provider;
    ComponentTypes typesOfComponents;
    QList<QSharedPointer<EDAComponent>> components;
    QList<QSharedPointer<EDANet>> nets;
    std::vector<Node> nodes;
    std::vector<std::size_t> firstNodes; ///< by component, and one for the end
};
}

#endif
