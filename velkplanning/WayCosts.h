#ifndef VELKPLANNING_WAYCOSTS_H
#define VELKPLANNING_WAYCOSTS_H

#include <velkplanning/GroupEnds.h>
#include <velkplanning/PlanCost.h>
#include <velkplanning/PlanProblem.h>
#include <velkplanning/WayGraph.h>

#include <velk/model/DisjointSets.h>

#include <limits>
#include <set>
#include <vector>

namespace Velk {

/// What a plan costs at least, each group looked at alone, and each set of nets that are connected while all gangs are
/// in their usual positions; and over what a way can lead in a plan that costs no more than so much.
class WayCosts
{
public:
    using Weight = WayGraph::Weight;

    /// An arc, and what a plan costs at least beyond least() in which a way leads over it.
    struct Use
    {
        int arc;
        Weight further;
    };

    /// That a net of a group is to be tied to its first one.
    struct Flow
    {
        int group;
        int source;
        int target;
        std::vector<Use> uses; ///< all arcs over which its way can lead, ascending
    };

    /// The problem has to stay.
    explicit WayCosts(const PlanProblem &planProblem);

    const std::vector<WayGraph::Arc> &arcs() const { return graph.arcs(); }
    const std::vector<Flow> &flows() const { return allFlows; }
    /// A group whose pins no way ties together, or none.
    int brokenGroup() const;
    /// What any plan costs at least, unless a group is broken.
    PlanCost least() const;
    /// Has least() count too what it costs that groups get in each other's way. To be called once; it takes long beside
    /// all else.
    void chargeCrowding();
    PlanCost costOf(const std::vector<int> &positions, int passivesThrough) const;
    PlanCost costOf(int gang, int position) const;

    /// The arcs over which the way of the flow can lead in a plan that costs no more than the budget.
    std::vector<int> arcsWithin(const PlanCost &budget, const Flow &flow) const;
    /// Whether a contact of the gang, closed in its usual position, may have to be opened.
    bool isSuspect(int gang) const { return suspects[static_cast<std::size_t>(gang)]; }
    /// Whether other gangs that are on no way can take another position than their usual one in such a plan.
    bool leavesRoomForOthers(const PlanCost &budget) const;

private:
    static constexpr Weight endless = std::numeric_limits<Weight>::max() / 4; ///< no way leads there

    void chargeGroup(int group, const GroupEnds &ends);
    void payForWay(const std::vector<Weight> &toTarget, Weight way, std::vector<Weight> &costs) const;
    void addFlow(int group, const GroupEnds &ends, const std::vector<Weight> &fromSource,
                 const std::vector<Weight> &costs);
    void chargeOpenings();
    std::vector<std::set<int>> partiesOfSets(DisjointSets &sets) const;
    Weight openingCost(int gang) const;
    /// The costs of the cheapest ways from a node or to it, by node.
    std::vector<Weight> distances(int node, bool isSource, int group, const std::vector<Weight> &costs) const;
    Weight weightOf(const PlanCost &cost) const;

    const PlanProblem &problem;
    const WayGraph graph;
    std::vector<Weight> leastOfGroups;
    std::vector<Weight> unpaid; ///< by arc, of the cost what the group that pays most for it does not pay
    std::vector<Flow> allFlows;
    std::vector<bool> suspects; ///< by gang
    Weight leastWeight = 0;
    Weight crowding = 0; ///< beyond that
};
}

#endif
