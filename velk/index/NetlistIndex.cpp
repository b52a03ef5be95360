#include <velk/index/NetlistIndex.h>

#include <velk/model/IndexedProvider.h>

#include <utility>

namespace Velk {

namespace {

/// Equal texts get the same number, counted from 0.
int numberOf(const QString &text, QHash<QString, int> &numbers)
{
    const auto known = numbers.constFind(text);
    return known != numbers.cend() ? *known : *numbers.insert(text, static_cast<int>(numbers.size()));
}
}

IndexedProvider::IndexedProvider() = default;
IndexedProvider::~IndexedProvider() = default;
IndexedProvider::IndexedProvider(const IndexedProvider &other) = default;
IndexedProvider &IndexedProvider::operator=(const IndexedProvider &other) = default;

NetlistIndex::NetlistIndex(const QList<QSharedPointer<EDAComponent>> &allComponents,
                           const QList<QSharedPointer<EDAPart>> &allParts)
    : components(allComponents)
{
    for (const auto &part : allParts)
        addPart(part);
    componentsByRef.reserve(components.size());
    typesOfComponents.reserve(toSize(componentCount()));
    identifiersOfComponents.reserve(toSize(componentCount()));
    partsOfComponents.reserve(toSize(componentCount()));
    for (const auto &component : std::as_const(components))
        addComponent(component);
    componentsByProperty.finish();
    numberPins();
}

void NetlistIndex::addPart(const QSharedPointer<EDAPart> &part)
{
    partsByName.insert(part->name, static_cast<int>(parts.size()));
    parts.push_back({part, {}, {}, {}});
    auto &positions = parts.back().positions;
    for (qsizetype i = part->pins.size() - 1; i >= 0; --i)
        positions.insert(part->pins.at(i)->number, static_cast<int>(i));
    parts.back().numbers.reserve(part->pins.size());
    for (const auto &pin : std::as_const(part->pins)) {
        parts.back().firstOfNumber.push_back(positions.value(pin->number));
        parts.back().numbers.append(pin->number);
    }
}

void NetlistIndex::addComponent(const QSharedPointer<EDAComponent> &component)
{
    componentsByRef.insert(component->ref, static_cast<int>(typesOfComponents.size()));
    componentsByProperty.add(component);
    typesOfComponents.push_back(numberOf(component->type(), typesByText) + 1);
    if (typesByText.size() == types.size())
        types.append(component->type());
    identifiersOfComponents.push_back(numberOf(component->identifier(), identifiersByText));
    partsOfComponents.push_back(partsByName.value(component->part, none));
}

void NetlistIndex::numberPins()
{
    constexpr std::size_t mostPins = 100'000'000;
    std::size_t count = 0;
    for (const int part : partsOfComponents)
        count += part == none ? 0 : static_cast<std::size_t>(parts[toSize(part)].part->pins.size());
    if (count > mostPins)
        return;
    firstPins.reserve(partsOfComponents.size() + 1);
    pinTerminals.reserve(count);
    for (const int part : partsOfComponents) {
        firstPins.push_back(static_cast<int>(pinTerminals.size()));
        if (part != none)
            addPinsOf(parts[toSize(part)]);
    }
    firstPins.push_back(static_cast<int>(pinTerminals.size()));
    terminalNets.assign(pinTerminals.size(), none);
}

void NetlistIndex::addPinsOf(const IndexedPart &indexedPart)
{
    const int first = static_cast<int>(pinTerminals.size());
    for (const int position : indexedPart.firstOfNumber)
        pinTerminals.push_back(first + position);
}

void NetlistIndex::reserveNets(qsizetype netCount, qsizetype nodeCount)
{
    nets.reserve(static_cast<std::size_t>(netCount));
    nodesOfNets.reserve(static_cast<std::size_t>(netCount));
    firstNodes.reserve(static_cast<std::size_t>(netCount) + 1);
    nodes.reserve(static_cast<std::size_t>(nodeCount));
}

void NetlistIndex::addNet(const QSharedPointer<EDANet> &net)
{
    nets.push_back(net);
    nodesOfNets.push_back(net->nodes);
    firstNodes.push_back(firstNodes.back());
}

void NetlistIndex::addNode(const NumberedNode &node)
{
    nodes.push_back(node);
    ++firstNodes.back();
    if (node.component == none)
        return;
    const int net = netCount() - 1;
    if (node.terminal == none)
        hiddenNets[node.component].push_back(net);
    else if (netOfTerminal(node.terminal) == none)
        terminalNets[toSize(node.terminal)] = net;
    else if (netOfTerminal(node.terminal) != net)
        addFurtherNet(node, net);
}

void NetlistIndex::addFurtherNet(const NumberedNode &node, int net)
{
    auto &further = furtherNets[node.terminal];
    if (!further.empty() && further.back() == net)
        return;
    further.push_back(net);
    hiddenNets[node.component].push_back(net);
}

void NetlistIndex::prepareSearches()
{
    if (hasTerminals())
        crossingGraphs.makeUsual(*this);
}

NumberedNode NetlistIndex::numberedNode(const QString &ref, const QString &pinNumber) const
{
    const int component = componentsByRef.value(ref, none);
    if (component == none)
        return {none, none, unlisted};
    const int part = partsOfComponents[toSize(component)];
    const int position = part == none || !hasTerminals() ? none : parts[toSize(part)].positions.value(pinNumber, none);
    return {component, position == none ? none : firstPin(component) + position, typeOf(component)};
}

std::vector<int> NetlistIndex::netsOfTerminal(int terminal) const
{
    std::vector<int> result = furtherNetsOfTerminal(terminal);
    if (netOfTerminal(terminal) != none)
        result.push_back(netOfTerminal(terminal));
    return result;
}

QSharedPointer<EDAComponent> NetlistIndex::componentOf(const QString &ref) const
{
    const int number = componentsByRef.value(ref, none);
    return number == none ? nullptr : components.at(number);
}

QSharedPointer<EDAPart> NetlistIndex::partOf(const QString &name) const
{
    const int number = partsByName.value(name, none);
    return number == none ? nullptr : parts[toSize(number)].part;
}
}
