#include <velk/index/ProviderIndex.h>

#include <QSet>

#include <vector>

namespace Velk {

namespace {

QList<QSharedPointer<EDAComponent>> componentsOf(const EDAProvider &provider)
{
    QList<QSharedPointer<EDAComponent>> result;
    QSet<QString> refs;
    const auto listed = provider.getComponents();
    for (const auto &component : listed) {
        if (!component || refs.contains(component->ref))
            continue;
        refs.insert(component->ref);
        const auto found = provider.getComponentByRef(component->ref);
        if (found && found->ref == component->ref)
            result.append(found);
    }
    return result;
}

QList<QSharedPointer<EDAPart>> partsOf(const EDAProvider &provider)
{
    QList<QSharedPointer<EDAPart>> result;
    QSet<QString> names;
    const auto listed = provider.getParts();
    for (const auto &part : listed) {
        if (!part || names.contains(part->name))
            continue;
        names.insert(part->name);
        const auto found = provider.getPartByName(part->name);
        if (found && found->name == part->name)
            result.append(found->clone()); // without null pins
    }
    return result;
}
}

std::unique_ptr<const NetlistIndex> indexOf(const EDAProvider &provider)
{
    auto index = std::make_unique<NetlistIndex>(partsOf(provider));
    const auto components = componentsOf(provider);
    std::vector<int> numbers;
    for (const auto &component : components) {
        numbers.push_back(static_cast<int>(numbers.size()));
        index->setComponent(numbers.back(), component);
    }
    index->finishComponents(components, numbers);
    const auto nets = provider.getNets();
    for (const auto &listed : nets) {
        if (!listed)
            continue;
        const auto net = listed->clone(); // without null nodes
        index->addNet(net);
        for (const auto &node : std::as_const(net->nodes))
            index->addNode(index->numberedNode(node->ref, node->pin));
    }
    return index;
}
}
