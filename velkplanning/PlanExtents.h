#ifndef VELKPLANNING_PLANEXTENTS_H
#define VELKPLANNING_PLANEXTENTS_H

#include <velkplanning/ConnectionGroups.h>

#include <velk/switching/Connectivity.h>

#include <QHash>
#include <QList>

#include <set>
#include <utility>
#include <vector>

namespace Velk {

/// What each group of connections reaches in a state, over closed contacts and the passives that it goes through.
class PlanExtents
{
public:
    /// \a through are the passives of each group. All three have to stay as they are.
    PlanExtents(const Connectivity &connectivity, const QList<ConnectionGroup> &connectionGroups,
                const std::vector<std::vector<int>> &through);

    const Connectivity &state() const { return connected; }
    const QList<ConnectionGroup> &groups() const { return groupsAskedFor; }
    const std::vector<int> &passivesOf(int group) const { return passivesOfGroups[static_cast<std::size_t>(group)]; }
    std::vector<int> netsOf(int group) const; ///< ascending
    /// The first group that reaches the set of connected nets, or none.
    int groupAt(int set) const { return groupOfSet[static_cast<std::size_t>(set)]; }
    int groupAtNet(int net) const { return groupAt(connected.setOf(net)); }
    /// Groups whose pins are not all tied together, ascending.
    const std::vector<int> &untiedGroups() const { return untied; }
    /// Pairs of groups that reach the same net: all, where no more than two meet.
    const std::set<std::pair<int, int>> &meetings() const { return pairsThatMeet; }

private:
    void addExtent(int group);
    QHash<int, std::vector<int>> passivesBySet(int group) const;
    const std::vector<int> &netsOfPassive(int passive) const;
    void occupy(int set, int group);

    const Connectivity &connected;
    const QList<ConnectionGroup> &groupsAskedFor;
    const std::vector<std::vector<int>> &passivesOfGroups;
    std::vector<std::vector<int>> setsOfGroups;
    std::vector<int> groupOfSet;
    std::vector<int> untied;
    std::set<std::pair<int, int>> pairsThatMeet;
};
}

#endif
