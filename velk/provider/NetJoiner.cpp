#include <velk/provider/NetJoiner.h>

#include <algorithm>

namespace Velk {

namespace {

constexpr qint64 notInTheRow = -1;
}

void NetJoiner::addNet()
{
    const int net = static_cast<int>(groups.size());
    groups.push_back(Group{{net}, {}, notInTheRow});
    leaders.push_back(net);
    putAtEnd(net);
}

void NetJoiner::addPin(const ConnectorPin &pin, bool isOfConnector)
{
    netsByPin[pin].push_back(leaders.back());
    if (isOfConnector)
        groups.back().untriedPins.push_back(pin);
}

std::vector<std::list<int>> NetJoiner::join()
{
    std::vector<std::list<int>> finished;
    while (!row.empty()) {
        const auto [number, place] = row.front();
        row.pop();
        if (group(number).place != place)
            continue;
        group(number).place = notInTheRow;
        std::vector<int> others;
        while (others.empty() && !group(number).untriedPins.empty())
            others = takeOthersOnNextPin(number);
        if (others.empty())
            finished.push_back(std::move(group(number).members));
        else
            joinGroups(number, others);
    }
    return finished;
}

// In the order of the row.
std::vector<int> NetJoiner::takeOthersOnNextPin(int number)
{
    const ConnectorPin pin = group(number).untriedPins.front();
    group(number).untriedPins.pop_front();
    std::vector<int> others;
    const auto netsOnPin = netsByPin.take(pin);
    for (const int net : netsOnPin) {
        const int other = leaderOf(net);
        if (group(other).place != notInTheRow)
            others.push_back(other);
    }
    std::sort(others.begin(), others.end(), [this](int a, int b) { return group(a).place < group(b).place; });
    others.erase(std::unique(others.begin(), others.end()), others.end());
    return others;
}

void NetJoiner::joinGroups(int first, const std::vector<int> &others)
{
    Group &joined = group(first);
    for (const int number : others) {
        Group &other = group(number);
        joined.members.splice(joined.members.end(), other.members);
        joined.untriedPins.splice(joined.untriedPins.end(), other.untriedPins);
        other.place = notInTheRow;
        leaders[static_cast<std::size_t>(number)] = first;
    }
    putAtEnd(first);
}

int NetJoiner::leaderOf(int net)
{
    const auto leader = [this](int number) -> int & { return leaders[static_cast<std::size_t>(number)]; };
    while (leader(net) != net) {
        leader(net) = leader(leader(net)); // halves the way for those who ask next
        net = leader(net);
    }
    return net;
}

void NetJoiner::putAtEnd(int number)
{
    group(number).place = nextPlace++;
    row.emplace(number, group(number).place);
}
}
