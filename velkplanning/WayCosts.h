#ifndef VELKPLANNING_WAYCOSTS_H
#define VELKPLANNING_WAYCOSTS_H

#include <velkplanning/PlanCost.h>
#include <velkplanning/PlanProblem.h>

#include <cstdint>
#include <vector>

namespace Velk {

/// What ways cost, each connection looked at alone: how much any plan costs at least, and which links can be part of a
/// plan that costs no more than so much.
///
/// All costs of a plan are added up to one number, in which nothing less important can outweigh what is more. The cost
/// of a position is shared by all links that it closes and that could be of use, so that no plan, in which links belong
/// to different groups, is charged more than it costs.
class WayCosts
{
public:
    using Weight = std::int64_t;
    static constexpr Weight endless = INT64_MAX / 4; ///< no way leads there

    /// That a net of the group is to be tied to its first one.
    struct Flow
    {
        int group;
        int source;
        int target;
        std::vector<Weight> fromSource; ///< to each net
        std::vector<Weight> toTarget;   ///< from each net
    };

    /// The problem has to stay.
    explicit WayCosts(const PlanProblem &planProblem);

    const std::vector<Flow> &flows() const { return allFlows; }
    /// A group whose pins no way ties together, or none.
    int brokenGroup() const;
    /// What any plan costs at least.
    PlanCost least() const;
    PlanCost costOf(const std::vector<int> &positions, int passivesThrough) const;
    PlanCost costOf(int gang, int position) const;

    /// Whether the way of the flow, in a plan that costs no more than the budget, can lead over the link or passive
    /// from one of its nets to another.
    bool mayCrossLink(const Flow &flow, int link, int from, int to, const PlanCost &budget) const;
    bool mayCrossPassive(const Flow &flow, int from, int to, const PlanCost &budget) const;
    /// Whether gangs that are on no way may take another position than their usual one.
    bool leavesRoomForOthers(const PlanCost &budget) const;
    /// Whether a way can lead over the link at all.
    bool isUseful(int link) const { return useful[static_cast<std::size_t>(link)]; }

private:
    Weight weightOf(const PlanCost &cost) const;
    Weight weightOf(int gang, int position) const;
    void findUsefulLinks();
    void shareCosts();
    void findFlows();
    std::vector<Weight> distancesFrom(int net, int group) const;
    bool fits(const Flow &flow, int from, Weight step, int to, const PlanCost &budget) const;

    const PlanProblem &problem;
    std::array<Weight, PlanCostLevels> weights; ///< of one of each
    std::vector<bool> useful;                   ///< by link
    std::vector<Weight> linkCosts;              ///< endless where it cannot be closed
    std::vector<Flow> allFlows;
    std::vector<Weight> leastOfGroups;
    Weight leastWeight = 0;
    Weight usualWeight = 0; ///< while all gangs are in their usual positions
};
}

#endif
