#include <velkplanning/ConnectionGroups.h>

#include <velk/model/DisjointSets.h>

#include <QHash>

#include <algorithm>
#include <tuple>

namespace Velk {

namespace {

void addPin(ConnectionGroup &group, const InterfacePin &pin)
{
    group.pins.append(pin);
    group.nets.push_back(pin.net);
}

void sortPins(ConnectionGroup &group)
{
    const auto keyOf = [](const InterfacePin &pin) { return std::tie(pin.ref, pin.number); };
    std::sort(group.pins.begin(), group.pins.end(),
              [&](const InterfacePin &a, const InterfacePin &b) { return keyOf(a) < keyOf(b); });
    const auto isSame = [&](const InterfacePin &a, const InterfacePin &b) { return keyOf(a) == keyOf(b); };
    group.pins.erase(std::unique(group.pins.begin(), group.pins.end(), isSame), group.pins.end());
    std::sort(group.nets.begin(), group.nets.end());
    group.nets.erase(std::unique(group.nets.begin(), group.nets.end()), group.nets.end());
}
}

QList<ConnectionGroup> groupsOf(const QList<ExpectedConnection> &connections, int netCount)
{
    DisjointSets sets(netCount);
    for (const ExpectedConnection &connection : connections)
        sets.unite(connection.from.net, connection.to.net);
    QList<ConnectionGroup> groups;
    QHash<int, qsizetype> places; // by the least net
    for (int i = 0; i < connections.size(); ++i) {
        const ExpectedConnection &connection = connections.at(i);
        const int least = sets.leastOf(connection.from.net);
        if (!places.contains(least)) {
            places.insert(least, groups.size());
            groups.emplaceBack();
        }
        ConnectionGroup &group = groups[places.value(least)];
        group.connections.push_back(i);
        addPin(group, connection.from);
        addPin(group, connection.to);
    }
    for (ConnectionGroup &group : groups)
        sortPins(group);
    return groups;
}
}
