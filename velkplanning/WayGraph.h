#ifndef VELKPLANNING_WAYGRAPH_H
#define VELKPLANNING_WAYGRAPH_H

#include <velkplanning/PlanProblem.h>

#include <cstdint>
#include <vector>

namespace Velk {

/// The links and passives over which ways can lead, with their costs, which are one number for all that counts: less of
/// what is more important always weighs less.
///
/// What the position of a gang costs is shared by all links that it closes and that could be of use, so that no plan,
/// in which links belong to different groups, is charged more than it costs.
class WayGraph
{
public:
    using Weight = std::int64_t;
    static constexpr int none = -1;

    /// A step from one node to another one. Each net is a node; passives are nodes of their own, behind them.
    struct Arc
    {
        int from;
        int to;
        int link;    ///< none of a step to or from a passive
        int passive; ///< none of a step over a link
        Weight cost;
    };

    /// What one gang that changes, one that is away from rest and one passive weigh.
    struct Weights
    {
        Weight change; ///< none where it does not matter how many change
        Weight away;
        Weight passive;
    };

    /// The problem has to stay.
    explicit WayGraph(const PlanProblem &planProblem);

    int nodeCount() const { return count; }
    const std::vector<Arc> &arcs() const { return allArcs; }
    NumberLists::List arcsFrom(int node) const { return outgoing.of(node); }
    NumberLists::List arcsTo(int node) const { return incoming.of(node); }
    /// Whether a way of the group may lead over the node.
    bool mayEnter(int group, int node) const
    {
        return node >= problem.network.model.netCount() || problem.mayReach(group, node);
    }

    /// Whether a way can lead over the link at all.
    bool isUseful(int link) const { return useful[static_cast<std::size_t>(link)]; }

    const Weights &weights() const { return weightsOfAll; }
    Weight weightOf(int gang, int position) const;

private:
    std::vector<bool> usefulLinks() const;
    std::vector<Weight> sharedCosts() const;
    std::vector<Arc> allUsefulArcs() const;

    const PlanProblem &problem;
    const Weights weightsOfAll;
    const int count;
    const std::vector<bool> useful; ///< by link
    const std::vector<Arc> allArcs;
    const NumberLists outgoing;
    const NumberLists incoming;
};
}

#endif
