#ifndef VELK_PROVIDER_NETJOINER_H
#define VELK_PROVIDER_NETJOINER_H

#include <velk/model/TextNumbers.h>

#include <QString>

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

    /// Adds a net to the end of the row; nets count from 0.
    void addNet();
    /// The net added last has a node on this pin of what has the identifier of this number. Every component can be met
    /// at its pins; only a connector looks for others.
    void addPin(int identifier, const QString &pinNumber, bool isOfConnector);

    /// The joined nets in the order in which they are finished, each as the first net of which it is made. Call it
    /// once.
    std::vector<int> join();
    /// The net that follows this one in its joined net, or none. Nets are in the order of the joined net's name.
    int nextMember(int net) const { return groups[toSize(net)].nextMember; }

private:
    /// Nets that have been joined so far, led by the one of them that is its name in leaderOf(). Its chain of untried
    /// nodes holds those of its connectors, in node order.
    struct Group
    {
        int lastMember;
        int nextMember; ///< of the net, in whatever group it is
        int firstUntried;
        int lastUntried;
        qint64 place; ///< in the row; larger is later
    };

    /// The pins at which components of one identifier meet.
    struct PinsOfIdentifier
    {
        TextNumbers<QString> numbers;
        std::vector<int> lastNodes; ///< of each pin; none once it has been tried
    };

    /// A node of a net on a connector pin, in two chains of nodes.
    struct PinnedNode
    {
        int identifier;
        int pin; ///< of the identifier
        int net;
        int nextOnPin;
        int nextUntried;
    };

    static std::size_t toSize(int number) { return static_cast<std::size_t>(number); }
    void addUntried(Group &group, int firstNode, int lastNode);
    void takeOthersOnNextPin(Group &group);
    void joinWithOthers(int first);
    int leaderOf(int net);
    void putAtEnd(int number);

    std::vector<Group> groups; ///< by the number of the leading net
    std::vector<int> leaders;  ///< of each net, over several steps
    std::vector<PinsOfIdentifier> identifiers;
    std::vector<PinnedNode> nodes;
    std::vector<std::pair<int, qint64>> row; ///< group and place; left behind where the place has changed
    std::vector<int> others;                 ///< those that a group is being joined with, in the order of the row
};
}

#endif
