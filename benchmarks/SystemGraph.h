#ifndef VELK_BENCHMARKS_SYSTEMGRAPH_H
#define VELK_BENCHMARKS_SYSTEMGRAPH_H

#include <velk/model/EDAProvider.h>

#include <vector>

namespace VelkBenchmarks {

/// Numbers of nets, components, terminals and nodes as places in the arrays.
inline std::size_t toSize(int number)
{
    return static_cast<std::size_t>(number);
}

/// A netlist as plain arrays of numbers, for the yardsticks. Terminals are the pins of the components, those of one
/// component consecutive; a net is a row of terminals. Of all roles the default types count.
struct SystemGraph
{
    static constexpr int none = -1;

    /// Every node must lie on one net only, and be a listed pin of a listed component. Throws std::logic_error
    /// otherwise.
    explicit SystemGraph(const Velk::EDAProvider &provider);

    int netCount() const { return static_cast<int>(firstNodes.size()) - 1; }
    int componentCount() const { return static_cast<int>(firstTerminals.size()) - 1; }

    std::vector<int> firstNodes;       ///< by net, and one more
    std::vector<int> terminalsOfNodes; ///< by node
    std::vector<int> firstTerminals;   ///< by component, and one more
    std::vector<int> componentsOfTerminals;
    std::vector<int> netsOfTerminals; ///< none where the pin is not connected
    std::vector<char> switchable;     ///< by component
    std::vector<char> interfaces;     ///< by component
    std::vector<QSharedPointer<Velk::EDAComponent>> components;
    std::vector<QSharedPointer<Velk::EDANetNode>> nodes;

    /// By the number or name of the pin. Throws std::logic_error where there is none.
    int terminal(const Velk::EDAProvider &provider, const QMap<QString, QString> &properties, const QString &pin) const;
};
}

#endif
