#include "benchmarks/BareJoin.h"

#include <QHash>

namespace VelkBenchmarks {

using namespace Velk;

namespace {

template <typename Element>
QHash<QString, int> placesOf(const QList<QSharedPointer<Element>> &elements, QString Element::*name)
{
    QHash<QString, int> places;
    for (const auto &element : elements)
        places.insert((*element).*name, static_cast<int>(places.size()));
    return places;
}

QSharedPointer<EDANet> joinedNet(const QList<QSharedPointer<EDANet>> &boardNets, const std::vector<int> &numbers)
{
    auto net = EDANet::create(boardNets.at(numbers.front())->name);
    for (std::size_t i = 1; i < numbers.size(); ++i)
        net->name += u'+' + boardNets.at(numbers[i])->name;
    qsizetype count = 0;
    for (const int number : numbers)
        count += boardNets.at(number)->nodes.size();
    net->nodes.reserve(count);
    for (const int number : numbers)
        net->nodes += boardNets.at(number)->nodes;
    return net;
}
}

BareJoin::BareJoin(const QList<EDAProvider *> &providers, const MultipleEDAProvider &joined)
{
    const auto partPlaces = placesOf(joined.getParts(), &EDAPart::name);
    const auto componentPlaces = placesOf(joined.getComponents(), &EDAComponent::ref);
    for (const EDAProvider *provider : providers) {
        const QString suffix = u'#' + QString::number(boards.size() + 1);
        boards.push_back({suffix, provider->getParts(), provider->getComponents(), provider->getNets()});
        for (const auto &part : std::as_const(boards.back().parts))
            parts.push_back(partPlaces.value(part->name + suffix));
        for (const auto &component : std::as_const(boards.back().components)) {
            components.push_back(componentPlaces.value(component->ref + suffix));
            partsOfComponents.push_back(partPlaces.value(component->part + suffix));
        }
        for (const auto &net : std::as_const(boards.back().nets)) {
            for (const auto &node : std::as_const(net->nodes))
                componentsOfNodes.push_back(componentPlaces.value(node->ref + suffix));
        }
    }
    numberNets(joined);
}

void BareJoin::numberNets(const MultipleEDAProvider &joined)
{
    QHash<const EDANetNode *, int> boardNetsOfNodes;
    const auto boardNets = joined.boardNets();
    for (qsizetype i = 0; i < boardNets.size(); ++i) {
        for (const auto &node : std::as_const(boardNets.at(i)->nodes))
            boardNetsOfNodes.insert(node.data(), static_cast<int>(i));
    }
    const auto nets = joined.getNets();
    for (const auto &net : nets) {
        auto &numbers = joinedBoardNets.emplace_back();
        for (const auto &node : std::as_const(net->nodes)) {
            const int boardNet = boardNetsOfNodes.value(node.data());
            if (numbers.empty() || numbers.back() != boardNet)
                numbers.push_back(boardNet);
        }
    }
}

JoinedElements BareJoin::make() const
{
    JoinedElements elements;
    makeParts(elements);
    makeComponents(elements);
    makeBoardNets(elements);
    makeNets(elements);
    return elements;
}

void BareJoin::makeParts(JoinedElements &elements) const
{
    elements.parts.resize(static_cast<qsizetype>(parts.size()));
    const auto copies = elements.parts.begin();
    auto place = parts.cbegin();
    for (const Board &board : boards) {
        for (const auto &part : board.parts) {
            auto copy = part->clone();
            copy->name += board.suffix;
            copies[*place++] = std::move(copy);
        }
    }
}

void BareJoin::makeComponents(JoinedElements &elements) const
{
    elements.components.resize(static_cast<qsizetype>(components.size()));
    const auto copies = elements.components.begin();
    auto place = components.cbegin();
    auto part = partsOfComponents.cbegin();
    for (const Board &board : boards) {
        for (const auto &component : board.components) {
            auto copy = component->clone();
            copy->ref += board.suffix;
            copy->part = elements.parts.at(*part++)->name;
            copies[*place++] = std::move(copy);
        }
    }
}

void BareJoin::makeBoardNets(JoinedElements &elements) const
{
    auto component = componentsOfNodes.cbegin();
    for (const Board &board : boards) {
        for (const auto &net : board.nets) {
            auto copy = EDANet::create(net->name + board.suffix);
            copy->nodes.reserve(net->nodes.size());
            for (const auto &node : std::as_const(net->nodes))
                copy->nodes.append(EDANetNode::create(elements.components.at(*component++)->ref, node->pin));
            elements.boardNets.append(std::move(copy));
        }
    }
}

void BareJoin::makeNets(JoinedElements &elements) const
{
    elements.nets.reserve(static_cast<qsizetype>(joinedBoardNets.size()));
    for (const auto &numbers : joinedBoardNets) {
        elements.nets.append(numbers.size() == 1 ? elements.boardNets.at(numbers.front())
                                                 : joinedNet(elements.boardNets, numbers));
    }
}
}
