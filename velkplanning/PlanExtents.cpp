#include <velkplanning/PlanExtents.h>

#include <QSet>

#include <algorithm>
#include <cstddef>

namespace Velk {

PlanExtents::PlanExtents(const Connectivity &connectivity, const QList<ConnectionGroup> &connectionGroups,
                         const std::vector<std::vector<int>> &through)
    : connected(connectivity)
    , groupsAskedFor(connectionGroups)
    , passivesOfGroups(through)
    , groupOfSet(static_cast<std::size_t>(connectivity.model().netCount()), SwitchingModel::none)
{
    for (int group = 0; group < groupsAskedFor.size(); ++group)
        addExtent(group);
}

std::vector<int> PlanExtents::netsOf(int group) const
{
    std::vector<int> nets;
    for (const int set : setsOfGroups[static_cast<std::size_t>(group)])
        nets.insert(nets.end(), connected.netsOf(set).cbegin(), connected.netsOf(set).cend());
    std::sort(nets.begin(), nets.end());
    return nets;
}

void PlanExtents::addExtent(int group)
{
    const QHash<int, std::vector<int>> passivesAt = passivesBySet(group);
    QSet<int> passed; // passives
    std::vector<int> sets;
    QSet<int> reached; // the same
    const auto reach = [&](int net) {
        const int set = connected.setOf(net);
        if (reached.contains(set))
            return;
        reached.insert(set);
        sets.push_back(set);
    };
    bool isTied = true;
    std::size_t followed = 0;
    for (const int net : groupsAskedFor.at(group).nets) {
        isTied = isTied && (sets.empty() || reached.contains(connected.setOf(net)));
        reach(net);
        for (; followed < sets.size(); ++followed) {
            for (const int passive : passivesAt.value(sets[followed])) {
                if (passed.contains(passive))
                    continue;
                passed.insert(passive);
                std::for_each(netsOfPassive(passive).cbegin(), netsOfPassive(passive).cend(), reach);
            }
        }
    }
    if (!isTied)
        untied.push_back(group);
    for (const int set : sets)
        occupy(set, group);
    setsOfGroups.push_back(sets);
}

QHash<int, std::vector<int>> PlanExtents::passivesBySet(int group) const
{
    QHash<int, std::vector<int>> passivesAt;
    for (const int passive : passivesOf(group)) {
        for (const int net : netsOfPassive(passive))
            passivesAt[connected.setOf(net)].push_back(passive);
    }
    return passivesAt;
}

const std::vector<int> &PlanExtents::netsOfPassive(int passive) const
{
    return connected.model().passives()[static_cast<std::size_t>(passive)].nets;
}

void PlanExtents::occupy(int set, int group)
{
    int &occupant = groupOfSet[static_cast<std::size_t>(set)];
    if (occupant == SwitchingModel::none)
        occupant = group;
    else
        pairsThatMeet.insert({occupant, group});
}
}
