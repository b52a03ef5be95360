#ifndef VELK_CLI_CHECK_CHECKEDSYSTEM_H
#define VELK_CLI_CHECK_CHECKEDSYSTEM_H

#include <velk/provider/MultipleEDAProvider.h>

#include <QHash>
#include <QStringList>

#include <vector>

namespace VelkCli {

/// What the components of a system are, each type in upper or lower case.
struct ComponentTypes
{
    QStringList connectors;
    QStringList switchables;
    QStringList interfaces;
    QStringList duts;

    bool isConnector(const Velk::EDAComponent &component) const;
    bool isSwitchable(const Velk::EDAComponent &component) const;
    /// All of the above and that of sources.
    QStringList known() const;
};

/// The netlists of a system in numbers: components in the order of their references, nets in the order in which they
/// were read.
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

    /// Over the netlists as they are without being plugged together, the references and net names with their "#n".
    CheckedSystem(const Velk::MultipleEDAProvider &netlists, int numberOfNetlists,
                  const ComponentTypes &componentTypes);

    const Velk::EDAProvider &netlists() const { return provider; }
    int netlistCount() const { return countOfNetlists; }
    const ComponentTypes &types() const { return typesOfComponents; }

    int componentCount() const { return static_cast<int>(components.size()); }
    const Velk::EDAComponent &component(int number) const { return *components.at(number); }
    const QList<QSharedPointer<Velk::EDAComponent>> &allComponents() const { return components; }
    Nodes nodesOf(int component) const;

    int netCount() const { return static_cast<int>(nets.size()); }
    const Velk::EDANet &net(int number) const { return *nets.at(number); }
    /// The same number for nets that are one when the netlists are plugged together.
    int joinedNet(int net) const { return joinedNets[static_cast<std::size_t>(net)]; }

    QStringList refsOf(const QList<int> &componentNumbers) const;

private:
    void collectNodes();
    void joinNets();

    const Velk::EDAProvider &provider;
    int countOfNetlists;
    ComponentTypes typesOfComponents;
    QList<QSharedPointer<Velk::EDAComponent>> components;
    QList<QSharedPointer<Velk::EDANet>> nets;
    std::vector<Node> nodes;
    std::vector<std::size_t> firstNodes; ///< by component, and one for the end
    std::vector<int> joinedNets;
};

/// The position of its netlist, from 1 on, in a reference or net name that ends in "#n".
int netlistOf(const QString &name);
}

#endif
