#ifndef VELKPLANNING_PLANDRAFT_H
#define VELKPLANNING_PLANDRAFT_H

#include <velkplanning/PlanProblem.h>

#include <velk/model/DisjointSets.h>

#include <vector>

namespace Velk {

/// Positions of all gangs, and the passives that groups go through, ascending, as a solver has found them.
struct PlanDraft
{
    std::vector<int> positions;
    std::vector<int> through;
};

/// What a draft ties together.
class DraftState
{
public:
    DraftState(const PlanProblem &planProblem, const PlanDraft &planDraft);

    /// Whether it is a plan, but for gangs and passives that are not needed.
    bool isPlan();
    /// The group whose extent holds the net, or none; of several groups the last one.
    int groupAt(int net) { return groupOfSet[static_cast<std::size_t>(extents.leastOf(net))]; }
    bool isClosed(const SwitchLink &link) const
    {
        return problem.isClosed(link, draft.positions[static_cast<std::size_t>(link.gang)]);
    }
    /// The least net that closed contacts connect with this one.
    int setOf(int net) { return connected.leastOf(net); }

    /// The least net that is tied to this one by closed contacts and passives of the draft.
    int extentOf(int net) { return extents.leastOf(net); }

    /// Two nets with pins that are connected, though neither is at rest nor in an extent. Empty where there are none.
    std::vector<int> strayPins();
    /// A net of a relay that is not known, in an extent, and another one of its nets, which is connected with a pin
    /// that is to be kept apart. Empty where there are none.
    std::vector<int> doubtfulNets();
    /// The passives of the draft with a net in an extent.
    std::vector<int> neededPassives();

private:
    bool tiesGroups();
    bool keepsApart();
    bool trustsKnownAlone();
    bool isUncoupled();

    const PlanProblem &problem;
    const PlanDraft &draft;
    DisjointSets connected;
    DisjointSets extents;
    std::vector<int> groupOfSet; ///< by the least net of the extent
};
}

#endif
