#ifndef VELK_PROVIDER_NETJOINER_H
#define VELK_PROVIDER_NETJOINER_H

#include <QHash>
#include <QString>

#include <list>
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
    static constexpr int none = -1;

    using ConnectorPin = std::pair<int, QString>; ///< number of the identifier, and pin number

    explicit NetJoiner(int netCount);

    /// Adds a net to the end of the row; nets count from 0.
    void addNet();
    /// The net added last has a node on this pin. Every component can be met at its pins; only a connector looks for
    /// others.
    void addPin(const ConnectorPin &pin, bool isOfConnector);

    /// The joined nets in the order in which they are finished, each as the first net of which it is made. Call it
    /// once.
    std::vector<int> join();
    /// The net that follows this one in its joined net, or none. Nets are in the order of the joined net's name.
    int nextMember(int net) const { return groups[toSize(net)].nextMember; }

private:
    /// Nets that have been joined so far, led by the one of them that is its name in leaderOf().
    struct Group
    {
        int lastMember;
        int nextMember;                      ///< of the net, in whatever group it is
        std::list<ConnectorPin> untriedPins; ///< of its connectors, in node order
        qint64 place;                        ///< in the row; larger is later
    };

    static std::size_t toSize(int number) { return static_cast<std::size_t>(number); }
    std::vector<int> takeOthersOnNextPin(int number);
    void joinGroups(int first, const std::vector<int> &others);
    int leaderOf(int net);
    void putAtEnd(int number);

    std::vector<Group> groups; ///< by the number of the leading net
    std::vector<int> leaders;  ///< of each net, over several steps
    QHash<ConnectorPin, std::vector<int>> netsByPin;
    std::vector<std::pair<int, qint64>> row; ///< group and place; left behind where the place has changed
};
}

#endif
