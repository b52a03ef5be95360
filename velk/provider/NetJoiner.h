#ifndef VELK_PROVIDER_NETJOINER_H
#define VELK_PROVIDER_NETJOINER_H

#include <velk/model/EDAComponent.h>
#include <velk/model/EDANet.h>

#include <QHash>
#include <QList>
#include <QMap>
#include <QString>

#include <functional>
#include <list>
#include <queue>
#include <utility>

namespace Velk {

/// Joins nets that hold the same pin of the same connector. The nets wait in a row. The first is taken out:
/// if one of its connector pins, tried in the order of its nodes, is on others in the row, it is joined with
/// all of those and goes to the end of the row, else it is finished.
///
/// Joined nets are groups of the nets given and become nets only when they are finished, and no pin is tried
/// twice: afterwards a single group holds it. So the time is near-linear in the number of nodes, whatever
/// joins with what.
class NetJoiner
{
public:
    using Components = QMap<QString, QSharedPointer<EDAComponent>>;
    using IsConnector = std::function<bool(const QSharedPointer<EDAComponent> &)>;

    /// \a nets in their order; \a components by the references that the nodes use.
    NetJoiner(const QList<QSharedPointer<EDANet>> &nets, const Components &components, const IsConnector &isConnector);

    /// The nets in the order in which they are finished. Call it once.
    QList<QSharedPointer<EDANet>> join();

private:
    using ConnectorPin = std::pair<QString, QString>; ///< identifier and pin number

    /// Nets that have been joined so far, led by the one of them that is its name in leaderOf.
    struct Group
    {
        std::list<qsizetype> members;        ///< in the order of the joined net's name
        std::list<ConnectorPin> untriedPins; ///< of its connectors, in node order
        qsizetype place;                     ///< in the row; larger is later
    };

    void indexNodes(qsizetype net, const Components &components, const IsConnector &isConnector);
    QList<qsizetype> takeOthersOnNextPin(qsizetype group);
    void joinGroups(qsizetype first, const QList<qsizetype> &others);
    qsizetype leaderOf(qsizetype net);
    bool isWaiting(qsizetype group) const { return groups.at(group).place >= 0; }
    void putAtEnd(qsizetype group);
    QSharedPointer<EDANet> combinedNet(const Group &group) const;

    const QList<QSharedPointer<EDANet>> nets;
    QList<Group> groups;      ///< by the number of the leading net
    QList<qsizetype> leaders; ///< of each net, over several steps
    QHash<ConnectorPin, QList<qsizetype>> netsByPin;
    std::queue<std::pair<qsizetype, qsizetype>> row; ///< group and place; left behind where the place has changed
    qsizetype nextPlace = 0;
};
}

#endif
