#include <velk/check/CheckedSystem.h>

#include <velk/ini/EDAApplicationIniGenerator.h>

#include <QHash>

#include <algorithm>
#include <tuple>

using namespace Qt::StringLiterals;

namespace Velk {

bool ComponentTypes::isConnector(const EDAComponent &component) const
{
    return connectors.contains(component.type(), Qt::CaseInsensitive);
}

bool ComponentTypes::isSwitchable(const EDAComponent &component) const
{
    return switchables.contains(component.type(), Qt::CaseInsensitive);
}

bool ComponentTypes::isRelay(const EDAComponent &component) const
{
    return isSwitchable(component) && !passives.contains(component.type(), Qt::CaseInsensitive);
}

QStringList ComponentTypes::known() const
{
    return connectors + switchables + passives + interfaces + duts +
           QStringList{EDAApplicationIniGenerator::DEFAULT_SOURCE_COMPONENT_TYPE};
}

CheckedSystem::CheckedSystem(const MultipleEDAProvider &joined, const ComponentTypes &componentTypes)
    : provider(joined)
    , typesOfComponents(componentTypes)
    , components(joined.getComponents())
    , nets(joined.boardNets())
{
    collectNodes();
}

void CheckedSystem::collectNodes()
{
    QHash<QString, int> numbers;
    for (int i = 0; i < componentCount(); ++i)
        numbers.insert(component(i).ref, i);
    for (int i = 0; i < netCount(); ++i) {
        for (const auto &node : net(i).nodes) {
            const auto number = numbers.constFind(node->ref);
            if (number != numbers.cend())
                nodes.push_back({*number, node->pin, i});
        }
    }
    const auto isBefore = [](const Node &a, const Node &b) {
        return std::tie(a.component, a.pin, a.net) < std::tie(b.component, b.pin, b.net);
    };
    std::sort(nodes.begin(), nodes.end(), isBefore);

    firstNodes.resize(static_cast<std::size_t>(componentCount()) + 1);
    for (const Node &node : nodes)
        ++firstNodes[static_cast<std::size_t>(node.component) + 1];
    for (std::size_t i = 1; i < firstNodes.size(); ++i)
        firstNodes[i] += firstNodes[i - 1];
}

CheckedSystem::Nodes CheckedSystem::nodesOf(int component) const
{
    const auto number = static_cast<std::size_t>(component);
    return {nodes.data() + firstNodes[number], nodes.data() + firstNodes[number + 1]};
}

QStringList CheckedSystem::refsOf(const QList<int> &componentNumbers) const
{
    QStringList refs;
    for (const int number : componentNumbers)
        refs.append(component(number).ref);
    return refs;
}
}
