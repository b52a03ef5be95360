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
    const int node = static_cast<int>(nodes.size());
    const int pin = numberOf(identifier, pinNumber);
    int &lastOnPin = lastNodesOnPins[toSize(pin)];
    nodes.push_back(PinnedNode{pin, leaders.back(), lastOnPin, none});
    lastOnPin = node;
    if (isOfConnector)
        addUntried(groups.back(), node, node);
}

int NetJoiner::numberOf(int identifier, const QString &pinNumber)
{
    const std::pair<int, int> pin(identifier, pinTexts.add(pinNumber));
    const auto known = pins.constFind(pin);
    if (known != pins.cend())
        return *known;
    lastNodesOnPins.push_back(none);
    return *pins.insert(pin, static_cast<int>(pins.size()));
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
    int node = std::exchange(lastNodesOnPins[toSize(untried.pin)], none);
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
