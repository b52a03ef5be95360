#ifndef VELK_PROVIDER_NETJOINER_H
#define VELK_PROVIDER_NETJOINER_H

#include <QHash>
#include <QString>

#include <list>
#include <queue>
#include <utility>
#include <vector>

namespace Velk {

/// Joins nets that hold the same pin of the same connector. The nets wait in a row. The first is taken out:
/// if one of its connector pins, tried in the order of its nodes, is on others in the row, it is joined with
/// all of those and goes to the end of the row, else it is finished.
///
/// Joined nets are groups of the nets given, and no pin is tried twice: afterwards a single group holds it. So the
/// time is near-linear in the number of nodes, whatever joins with what.
class NetJoiner
{
public:
    using ConnectorPin = std::pair<int, QString>; ///< number of the identifier, and pin number

    /// Adds a net to the end of the row; nets count from 0.
    void addNet();
    /// The net added last has a node on this pin. Every component can be met at its pins; only a connector looks for
    /// others.
    void addPin(const ConnectorPin &pin, bool isOfConnector);

    /// The nets in the order in which they are finished, each as those of which it is made, in the order of its name.
    /// Call it once.
    std::vector<std::list<int>> join();

private:
    /// Nets that have been joined so far, led by the one of them that is its name in leaderOf().
    struct Group
    {
        std::list<int> members;              ///< in the order of the joined net's name
        std::list<ConnectorPin> untriedPins; ///< of its connectors, in node order
        qint64 place;                        ///< in the row; larger is later
    };

    std::vector<int> takeOthersOnNextPin(int group);
    void joinGroups(int first, const std::vector<int> &others);
    int leaderOf(int net);
    void putAtEnd(int group);
    Group &group(int number) { return groups[static_cast<std::size_t>(number)]; }

    std::vector<Group> groups; ///< by the number of the leading net
    std::vector<int> leaders;  ///< of each net, over several steps
    QHash<ConnectorPin, std::vector<int>> netsByPin;
    std::queue<std::pair<int, qint64>> row; ///< group and place; left behind where the place has changed
    qint64 nextPlace = 0;
};
}

#endif
