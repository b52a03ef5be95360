#ifndef VELKPLANNING_PLANPROBLEM_H
#define VELKPLANNING_PLANPROBLEM_H

#include <velkplanning/ConnectionGroups.h>
#include <velkplanning/ConnectionRequest.h>
#include <velkplanning/SwitchNetwork.h>

#include <vector>

namespace Velk {

/// A request in terms of nets and gangs: who may lie where, what may move, and what it costs.
class PlanProblem
{
public:
    static constexpr int none = -1;

    /// The network and the request have to stay. \a before are the positions of all gangs.
    PlanProblem(const SwitchNetwork &switchNetwork, const ConnectionRequest &wanted,
                const std::vector<int> &positionsBefore);

    int groupCount() const { return static_cast<int>(groups.size()); }
    /// The group with a pin on the net, or none.
    int ownerOf(int net) const { return owners[static_cast<std::size_t>(net)]; }
    /// No group may reach the net, since it is excluded or holds a pin that is not allowed.
    bool isBarred(int net) const { return barred[static_cast<std::size_t>(net)]; }
    /// A pin of an interface lies there that was not asked for.
    bool isWatched(int net) const { return watched[static_cast<std::size_t>(net)]; }
    /// Such a pin, to which no group may lead.
    bool isForbidden(int net) const { return forbidden[static_cast<std::size_t>(net)]; }
    bool mayReach(int group, int net) const
    {
        return ownerOf(net) == group || (ownerOf(net) == none && !isBarred(net));
    }

    /// Whether a gang can take another position than its usual one.
    bool mayMove(int gang) const { return movable[static_cast<std::size_t>(gang)]; }
    bool isExcluded(int passive) const { return excludedPassives[static_cast<std::size_t>(passive)]; }
    bool mayGoThrough(int passive) const
    {
        return !isExcluded(passive) && network.model.passives()[static_cast<std::size_t>(passive)].isWay;
    }
    /// That it takes unless there is a reason: rest, or where the fewest changes are wanted the one before.
    int usualPosition(int gang) const { return usual[static_cast<std::size_t>(gang)]; }
    /// Whether the link is closed while its gang is in the position.
    bool isClosed(const SwitchLink &link, int position) const;
    /// Whether the link can be closed.
    bool isPossible(const SwitchLink &link) const;

    const SwitchNetwork &network;
    const ConnectionRequest &request;
    const std::vector<int> before;
    const QList<ConnectionGroup> groups;

private:
    void markNets();
    void markGangs();
    void markPassives();

    std::vector<int> owners;
    std::vector<bool> barred;
    std::vector<bool> watched;
    std::vector<bool> forbidden;
    std::vector<bool> movable;
    std::vector<bool> excludedPassives;
    std::vector<int> usual;
};
}

#endif
