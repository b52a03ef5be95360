#include <velk/model/NetlistIndex.h>

#include <velk/model/IndexedProvider.h>

#include <algorithm>
#include <utility>

namespace Velk {

IndexedProvider::IndexedProvider() = default;
IndexedProvider::~IndexedProvider() = default;
IndexedProvider::IndexedProvider(const IndexedProvider &other) = default;
IndexedProvider &IndexedProvider::operator=(const IndexedProvider &other) = default;

NetlistIndex::NetlistIndex(const QList<QSharedPointer<EDANet>> &allNets,
                           const QMap<QString, QSharedPointer<EDAComponent>> &componentsByRef,
                           const QMap<QString, QSharedPointer<EDAPart>> &partsByName)
    : nets(allNets)
{
    for (const auto &component : componentsByRef)
        addComponent(component, partsByName.value(component->part));
    firstPins.push_back(static_cast<int>(pinTerminals.size()));
    terminalNets.assign(pinTerminals.size(), none);
    for (int net = 0; net < netCount(); ++net)
        addNet(nets.at(net), net);
    firstNodes.push_back(static_cast<int>(nodeTerminals.size()));
}

void NetlistIndex::addComponent(const QSharedPointer<EDAComponent> &component, const QSharedPointer<EDAPart> &part)
{
    const int number = static_cast<int>(components.size());
    numbersByRef.insert(component->ref, number);
    const auto &properties = component->properties;
    for (auto it = properties.cbegin(); it != properties.cend(); ++it)
        numbersByProperty[{it.key(), it.value()}].push_back(number);
    components.append(component);
    partsOfComponents.push_back(part);

    const QString type = component->type();
    if (!typesByText.contains(type)) {
        typesByText.insert(type, static_cast<int>(types.size()));
        types.append(type);
    }
    typeIds.push_back(typesByText.value(type));

    const int first = static_cast<int>(pinTerminals.size());
    firstPins.push_back(first);
    if (part.isNull())
        return;
    auto &positions = pinsByPart[part.data()];
    if (positions.isEmpty()) {
        for (qsizetype i = part->pins.size() - 1; i >= 0; --i)
            positions.insert(part->pins.at(i)->number, static_cast<int>(i));
    }
    for (const auto &pin : std::as_const(part->pins))
        pinTerminals.push_back(first + positions.value(pin->number));
}

void NetlistIndex::addNet(const QSharedPointer<EDANet> &net, int number)
{
    firstNodes.push_back(static_cast<int>(nodeTerminals.size()));
    for (const auto &node : std::as_const(net->nodes)) {
        const int component = numbersByRef.value(node->ref, none);
        const int nodeTerminal = terminal(node->ref, node->pin);
        nodeComponents.push_back(component);
        nodeTerminals.push_back(nodeTerminal);
        if (component == none)
            continue;
        if (nodeTerminal == none) {
            hiddenNets.insert(component, number);
        } else if (netOfTerminal(nodeTerminal) == none) {
            terminalNets[toSize(nodeTerminal)] = number;
        } else if (netOfTerminal(nodeTerminal) != number && !furtherNets.contains(nodeTerminal, number)) {
            furtherNets.insert(nodeTerminal, number);
            hiddenNets.insert(component, number);
        }
    }
}

QSharedPointer<EDAComponent> NetlistIndex::componentWith(const QMap<QString, QString> &properties) const
{
    const std::vector<int> *fewest = nullptr;
    for (auto it = properties.cbegin(); it != properties.cend(); ++it) {
        if (it.value().isEmpty())
            continue; // also matches components without the property, so it does not narrow the choice
        const auto having = numbersByProperty.constFind({it.key(), it.value()});
        if (having == numbersByProperty.cend())
            return {};
        if (!fewest || having->size() < fewest->size())
            fewest = &*having;
    }
    const auto candidateCount = fewest ? fewest->size() : static_cast<std::size_t>(components.size());
    for (std::size_t i = 0; i < candidateCount; ++i) {
        const auto &candidate = components.at(fewest ? (*fewest)[i] : static_cast<int>(i));
        if (candidate->matchesProperties(properties))
            return candidate;
    }
    return {};
}

QList<int> NetlistIndex::netsOfTerminal(int terminal) const
{
    QList<int> result = furtherNets.values(terminal);
    if (netOfTerminal(terminal) != none)
        result.append(netOfTerminal(terminal));
    return result;
}

int NetlistIndex::terminal(const QString &ref, const QString &pinNumber) const
{
    const int component = numbersByRef.value(ref, none);
    if (component == none || partsOfComponents[toSize(component)].isNull())
        return none;
    const auto positions = pinsByPart.constFind(partsOfComponents[toSize(component)].data());
    const int position = positions->value(pinNumber, none);
    return position == none ? none : firstPin(component) + position;
}
}
