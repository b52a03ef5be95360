#include <velk/provider/NetJoiner.h>

#include <algorithm>

namespace Velk {

namespace {

constexpr qint64 notInTheRow = -1;
}

NetJoiner::NetJoiner(int netCount)
{
    groups.reserve(toSize(netCount));
    leaders.reserve(toSize(netCount));
    row.reserve(toSize(netCount));
}

void NetJoiner::addNet()
{
    const int net = static_cast<int>(groups.size());
    groups.push_back(Group{net, none, {}, notInTheRow});
    leaders.push_back(net);
    putAtEnd(net);
}

void NetJoiner::addPin(const ConnectorPin &pin, bool isOfConnector)
{
    netsByPin[pin].push_back(leaders.back());
    if (isOfConnector)
        groups.back().untriedPins.push_back(pin);
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
        std::vector<int> others;
        while (others.empty() && !group.untriedPins.empty())
            others = takeOthersOnNextPin(number);
        if (others.empty())
            finished.push_back(number);
        else
            joinGroups(number, others);
    }
    return finished;
}

// In the order of the row.
std::vector<int> NetJoiner::takeOthersOnNextPin(int number)
{
    auto &untriedPins = groups[toSize(number)].untriedPins;
    const ConnectorPin pin = untriedPins.front();
    untriedPins.pop_front();
    std::vector<int> others;
    const auto netsOnPin = netsByPin.take(pin);
    for (const int net : netsOnPin) {
        const int other = leaderOf(net);
        if (groups[toSize(other)].place != notInTheRow)
            others.push_back(other);
    }
    std::sort(others.begin(), others.end(),
              [this](int a, int b) { return groups[toSize(a)].place < groups[toSize(b)].place; });
    others.erase(std::unique(others.begin(), others.end()), others.end());
    return others;
}

void NetJoiner::joinGroups(int first, const std::vector<int> &others)
{
    Group &joined = groups[toSize(first)];
    for (const int number : others) {
        Group &other = groups[toSize(number)];
        groups[toSize(joined.lastMember)].nextMember = number;
        joined.lastMember = other.lastMember;
        joined.untriedPins.splice(joined.untriedPins.end(), other.untriedPins);
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
