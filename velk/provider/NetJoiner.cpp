#include <velk/provider/NetJoiner.h>

#include <algorithm>

namespace Velk {

namespace {

constexpr qint64 notInTheRow = -1;
}

void NetJoiner::addNet()
{
    const int net = static_cast<int>(groups.size());
    groups.push_back(Group{net, none, none, none, notInTheRow});
    leaders.push_back(net);
    putAtEnd(net);
}

void NetJoiner::addPin(int identifier, const QString &pinNumber, bool isOfConnector)
{
    identifiers.resize(std::max(identifiers.size(), toSize(identifier) + 1));
    PinsOfIdentifier &pins = identifiers[toSize(identifier)];
    const int pin = pins.numbers.add(pinNumber);
    pins.lastNodes.resize(toSize(pins.numbers.count()), none);
    const int node = static_cast<int>(nodes.size());
    nodes.push_back(PinnedNode{identifier, pin, leaders.back(), pins.lastNodes[toSize(pin)], none});
    pins.lastNodes[toSize(pin)] = node;
    if (isOfConnector)
        addUntried(groups.back(), node, node);
}

void NetJoiner::addUntried(Group &group, int firstNode, int lastNode)
{
    if (firstNode == none)
        return;
    (group.firstUntried == none ? group.firstUntried : nodes[toSize(group.lastUntried)].nextUntried) = firstNode;
    group.lastUntried = lastNode;
}

std::vector<int> NetJoiner::join()
{
    std::vector<int> finished;
    finished.reserve(groups.size());
    for (std::size_t next = 0; next < row.size(); ++next) {
        const auto [number, place] = row[next];
        Group &group = groups[toSize(number)];
        if (group.place != place)
            continue;
        group.place = notInTheRow;
        others.clear();
        while (others.empty() && group.firstUntried != none)
            takeOthersOnNextPin(group);
        if (others.empty())
            finished.push_back(number);
        else
            joinWithOthers(number);
    }
    return finished;
}

void NetJoiner::takeOthersOnNextPin(Group &group)
{
    const PinnedNode &untried = nodes[toSize(group.firstUntried)];
    group.firstUntried = untried.nextUntried;
    int node = std::exchange(identifiers[toSize(untried.identifier)].lastNodes[toSize(untried.pin)], none);
    for (; node != none; node = nodes[toSize(node)].nextOnPin) {
        const int other = leaderOf(nodes[toSize(node)].net);
        if (groups[toSize(other)].place != notInTheRow)
            others.push_back(other);
    }
    std::sort(others.begin(), others.end(),
              [this](int a, int b) { return groups[toSize(a)].place < groups[toSize(b)].place; });
    others.erase(std::unique(others.begin(), others.end()), others.end());
}

void NetJoiner::joinWithOthers(int first)
{
    Group &joined = groups[toSize(first)];
    for (const int number : others) {
        Group &other = groups[toSize(number)];
        groups[toSize(joined.lastMember)].nextMember = number;
        joined.lastMember = other.lastMember;
        addUntried(joined, other.firstUntried, other.lastUntried);
        other.place = notInTheRow;
        leaders[toSize(number)] = first;
    }
    putAtEnd(first);
}

int NetJoiner::leaderOf(int net)
{
    while (leaders[toSize(net)] != net) {
        leaders[toSize(net)] = leaders[toSize(leaders[toSize(net)])]; // halves the way for those who ask next
        net = leaders[toSize(net)];
    }
    return net;
}

void NetJoiner::putAtEnd(int number)
{
    groups[toSize(number)].place = static_cast<qint64>(row.size());
    row.emplace_back(number, groups[toSize(number)].place);
}
}
