#include <velk/index/NetlistIndex.h>

#include <velk/model/IndexedProvider.h>

#include <atomic>
#include <utility>

namespace Velk {

namespace {

constexpr NumberedNode nowhere{NetlistIndex::none, NetlistIndex::none, NetlistIndex::unlisted};

quint64 nextSerialNumber()
{
    static std::atomic<quint64> latest{0};
    return ++latest;
}
}

IndexedProvider::IndexedProvider() = default;
IndexedProvider::~IndexedProvider() = default;
IndexedProvider::IndexedProvider(const IndexedProvider &other) = default;
IndexedProvider &IndexedProvider::operator=(const IndexedProvider &other) = default;

NetlistIndex::NetlistIndex(const QList<QSharedPointer<EDAPart>> &allParts)
    : serialNumber(nextSerialNumber())
{
    parts.reserve(static_cast<std::size_t>(allParts.size()));
    for (const auto &part : allParts)
        addPart(part);
}

void NetlistIndex::addPart(const QSharedPointer<EDAPart> &part)
{
    partNames.add(part->name);
    parts.push_back({part, {}, {}, {}, {}});
    IndexedPart &indexed = parts.back();
    indexed.numbers.reserve(part->pins.size());
    for (const auto &pin : std::as_const(part->pins)) {
        const int number = indexed.pinNumbers.add(pin->number);
        if (number == static_cast<int>(indexed.firstPositions.size()))
            indexed.firstPositions.push_back(static_cast<int>(indexed.numbers.size()));
        indexed.firstOfNumber.push_back(indexed.firstPositions[toSize(number)]);
        indexed.numbers.append(pin->number);
    }
}

int NetlistIndex::IndexedPart::positionOf(QStringView number) const
{
    const int known = pinNumbers.numberOf(number);
    return known == none ? none : firstPositions[toSize(known)];
}

void NetlistIndex::setComponent(int number, const QSharedPointer<EDAComponent> &component)
{
    const NumberedComponent numbered = numberedComponent(number, *component);
    if (number < componentCount()) {
        components[toSize(number)] = component;
        numberedComponents[toSize(number)] = numbered;
        return;
    }
    refs.add(component->ref);
    components.push_back(component);
    numberedComponents.push_back(numbered);
}

NetlistIndex::NumberedComponent NetlistIndex::numberedComponent(int number, const EDAComponent &component)
{
    QString type;
    QString identifier;
    componentsByProperty.beginComponent(number);
    for (auto it = component.properties.cbegin(); it != component.properties.cend(); ++it) {
        componentsByProperty.add(it.key(), it.value());
        if (it.key() == EDAComponent::TYPE)
            type = it.value();
        else if (it.key() == EDAComponent::IDENTIFER)
            identifier = it.value();
    }
    const int typeNumber = typeNumbers.add(type) + 1;
    if (typeNumber == types.size())
        types.append(type);
    return {typeNumber, identifiers.add(identifier), partNames.numberOf(component.part), none};
}

void NetlistIndex::finishComponents(const QList<QSharedPointer<EDAComponent>> &inOrder, const std::vector<int> &numbers)
{
    componentsByProperty.finish(inOrder, numbers);
    numberPins();
}

void NetlistIndex::numberPins()
{
    constexpr std::size_t mostPins = 100'000'000;
    std::size_t count = 0;
    for (const NumberedComponent &component : numberedComponents)
        count += component.part == none ? 0 : parts[toSize(component.part)].firstOfNumber.size();
    if (count > mostPins)
        return;
    pinTerminals.reserve(count);
    for (NumberedComponent &component : numberedComponents) {
        component.firstPin = static_cast<int>(pinTerminals.size());
        if (component.part != none)
            addPinsOf(parts[toSize(component.part)]);
    }
    numberedComponents.push_back({unlisted, none, none, static_cast<int>(pinTerminals.size())});
    terminalNets.assign(pinTerminals.size(), none);
    terminalsAreNumbered = true;
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

void NetlistIndex::setBoardNets(const QList<QSharedPointer<EDANet>> &netsOfBoards, std::vector<int> joinedNets)
{
    netsBeforeJoining = netsOfBoards;
    netsAfterJoining = std::move(joinedNets);
}

void NetlistIndex::prepareSearches()
{
    if (hasTerminals())
        crossingGraphs.makeUsual(*this);
}

NumberedNode NetlistIndex::numberedNode(const QString &ref, const QString &pinNumber) const
{
    return numberedNode(componentNumber(ref), pinNumber);
}

NumberedNode NetlistIndex::numberedNode(int component, const QString &pinNumber) const
{
    if (component == none)
        return nowhere;
    const NumberedComponent &numbered = numberedComponents[toSize(component)];
    const int position =
        numbered.part == none || !hasTerminals() ? none : parts[toSize(numbered.part)].positionOf(pinNumber);
    return {component, position == none ? none : numbered.firstPin + position, numbered.type};
}

QVarLengthArray<int, 4> NetlistIndex::netsOfTerminal(int terminal) const
{
    const auto further = furtherNetsOfTerminal(terminal);
    QVarLengthArray<int, 4> result(further.begin(), further.end());
    if (netOfTerminal(terminal) != none)
        result.append(netOfTerminal(terminal));
    return result;
}

QSharedPointer<EDAComponent> NetlistIndex::componentOf(const QString &ref) const
{
    const int number = refs.numberOf(ref);
    return number == none ? nullptr : component(number);
}

QSharedPointer<EDAPart> NetlistIndex::partOf(const QString &name) const
{
    const int number = partNames.numberOf(name);
    return number == none ? nullptr : parts[toSize(number)].part;
}

NumberedNode NetlistIndex::pinOf(const QSharedPointer<EDAComponent> &component, const QString &pinNumberOrName) const
{
    const int part = component ? partNames.numberOf(component->part) : none;
    const auto pin = part == none ? nullptr : parts[toSize(part)].part->getPinByNumberOrName(pinNumberOrName);
    return pin ? numberedNode(component->ref, pin->number) : nowhere;
}

NumberedNode NetlistIndex::pinOf(const QMap<QString, QString> &properties, const QString &pinNumberOrName) const
{
    return pinOf(componentWith(properties), pinNumberOrName);
}
}
