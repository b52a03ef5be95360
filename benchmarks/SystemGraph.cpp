#include "benchmarks/SystemGraph.h"

#include "benchmarks/Roles.h"

#include <QHash>

#include <stdexcept>

namespace VelkBenchmarks {

using namespace Velk;

SystemGraph::SystemGraph(const EDAProvider &provider)
{
    QHash<std::pair<QString, QString>, int> terminals;
    const auto allComponents = provider.getComponents();
    for (const auto &component : allComponents) {
        firstTerminals.push_back(static_cast<int>(componentsOfTerminals.size()));
        switchable.push_back(isSwitchable(*component) ? 1 : 0);
        interfaces.push_back(isInterface(*component) ? 1 : 0);
        const auto part = provider.getPartByName(component->part);
        for (const auto &pin : std::as_const(part->pins)) {
            terminals.insert({component->ref, pin->number}, static_cast<int>(componentsOfTerminals.size()));
            componentsOfTerminals.push_back(static_cast<int>(components.size()));
        }
        components.push_back(component);
    }
    firstTerminals.push_back(static_cast<int>(componentsOfTerminals.size()));
    netsOfTerminals.assign(componentsOfTerminals.size(), none);

    int number = 0;
    const auto allNets = provider.getNets();
    for (const auto &net : allNets) {
        firstNodes.push_back(static_cast<int>(nodes.size()));
        for (const auto &node : std::as_const(net->nodes)) {
            const int terminal = terminals.value({node->ref, node->pin}, none);
            if (terminal == none || netsOfTerminals[toSize(terminal)] != none)
                throw std::logic_error("a node is unknown or lies on two nets");
            netsOfTerminals[toSize(terminal)] = number;
            terminalsOfNodes.push_back(terminal);
            nodes.push_back(node);
        }
        ++number;
    }
    firstNodes.push_back(static_cast<int>(nodes.size()));
}

int SystemGraph::terminal(const EDAProvider &provider, const QMap<QString, QString> &properties,
                          const QString &pin) const
{
    for (int component = 0; component < componentCount(); ++component) {
        if (!components[toSize(component)]->matchesProperties(properties))
            continue;
        const auto part = provider.getPartByName(components[toSize(component)]->part);
        const auto found = part->getPinByNumberOrName(pin);
        for (qsizetype i = 0; i < part->pins.size(); ++i) {
            if (part->pins.at(i).data() == found.data())
                return firstTerminals[toSize(component)] + static_cast<int>(i);
        }
    }
    throw std::logic_error("no such pin");
}
}
