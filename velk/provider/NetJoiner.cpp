#include <velk/provider/NetJoiner.h>

#include <velk/model/RoutingLog.h>

#include <QStringList>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace Velk {

namespace {

constexpr qsizetype notInTheRow = -1;
}

NetJoiner::NetJoiner(const QList<QSharedPointer<EDANet>> &allNets, const Components &components,
                     const IsConnector &isConnector)
    : nets(allNets)
{
    groups.reserve(nets.size());
    leaders.reserve(nets.size());
    for (qsizetype net = 0; net < nets.size(); ++net) {
        groups.append(Group{{net}, {}, notInTheRow});
        leaders.append(net);
        indexNodes(net, components, isConnector);
        putAtEnd(net);
    }
}

void NetJoiner::indexNodes(qsizetype net, const Components &components, const IsConnector &isConnector)
{
    for (const auto &node : std::as_const(nets.at(net)->nodes)) {
        const auto component = components.value(node->ref);
        if (component.isNull()) {
            qCDebug(routingLog).noquote() << u"No component found for component.ref '%1'"_s.arg(node->ref);
            continue;
        }
        // Every component can be met at its pins; only a connector looks for others.
        const ConnectorPin pin{component->identifier(), node->pin};
        netsByPin[pin].append(net);
        if (isConnector(component))
            groups[net].untriedPins.push_back(pin);
    }
}

QList<QSharedPointer<EDANet>> NetJoiner::join()
{
    QList<QSharedPointer<EDANet>> finished;
    while (!row.empty()) {
        const auto [group, place] = row.front();
        row.pop();
        if (groups.at(group).place != place)
            continue;
        groups[group].place = notInTheRow;
        QList<qsizetype> others;
        while (others.isEmpty() && !groups.at(group).untriedPins.empty())
            others = takeOthersOnNextPin(group);
        if (others.isEmpty())
            finished.append(combinedNet(groups.at(group)));
        else
            joinGroups(group, others);
    }
    return finished;
}

// In the order of the row.
QList<qsizetype> NetJoiner::takeOthersOnNextPin(qsizetype group)
{
    const ConnectorPin pin = groups.at(group).untriedPins.front();
    groups[group].untriedPins.pop_front();
    QList<qsizetype> others;
    const auto netsOnPin = netsByPin.take(pin);
    for (const qsizetype net : netsOnPin) {
        const qsizetype other = leaderOf(net);
        if (isWaiting(other))
            others.append(other);
    }
    std::sort(others.begin(), others.end(),
              [&](qsizetype a, qsizetype b) { return groups.at(a).place < groups.at(b).place; });
    others.erase(std::unique(others.begin(), others.end()), others.end());
    return others;
}

void NetJoiner::joinGroups(qsizetype first, const QList<qsizetype> &others)
{
    Group &joined = groups[first];
    for (const qsizetype other : others) {
        Group &group = groups[other];
        joined.members.splice(joined.members.end(), group.members);
        joined.untriedPins.splice(joined.untriedPins.end(), group.untriedPins);
        group.place = notInTheRow;
        leaders[other] = first;
    }
    putAtEnd(first);
}

qsizetype NetJoiner::leaderOf(qsizetype net)
{
    while (leaders.at(net) != net) {
        leaders[net] = leaders.at(leaders.at(net)); // halves the way for those who ask next
        net = leaders.at(net);
    }
    return net;
}

void NetJoiner::putAtEnd(qsizetype group)
{
    groups[group].place = nextPlace++;
    row.emplace(group, groups.at(group).place);
}

QSharedPointer<EDANet> NetJoiner::combinedNet(const Group &group) const
{
    if (group.members.size() == 1)
        return nets.at(group.members.front());
    QStringList names;
    auto combined = EDANet::create({});
    for (const qsizetype member : group.members) {
        names.append(nets.at(member)->name);
        combined->nodes += nets.at(member)->nodes;
    }
    combined->name = names.join(u'+');
    return combined;
}
}
