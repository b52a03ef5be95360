#ifndef VELKPLANNING_PLANENCODING_H
#define VELKPLANNING_PLANENCODING_H

#include <velkplanning/PlanCost.h>
#include <velkplanning/PlanDraft.h>
#include <velkplanning/PlanProblem.h>
#include <velkplanning/SatSolver.h>
#include <velkplanning/WayCosts.h>

#include <velk/model/DisjointSets.h>

#include <map>
#include <vector>

namespace Velk {

/// Whether there is a plan that costs no more than so much, as clauses for a solver.
///
/// Each gang is in one position. Each net has a label, in binary: of a group, or of pins that are connected at rest,
/// or any. What a closed contact connects has one label; so nothing touches what it must not. The label of a group may
/// lie on nets that it does not reach: that does no harm, but where a pin would be kept apart if it were not for such a
/// label. For each pin of a group but the first one a way is drawn from there: a row of closed links over nets of the
/// label, no net being entered twice.
///
/// Gangs that no plan of this cost can move are fixed, and nets that they connect are one node.
class PlanEncoding
{
public:
    /// The problem, the costs and the time have to stay.
    PlanEncoding(const PlanProblem &planProblem, const WayCosts &wayCosts, const PlanCost &mostCost,
                 const PlanningTime &planningTime);

    /// A draft that is a plan, but maybe one with gangs and passives that are not needed, and so too dear.
    SatSolver::Answer solve(SatSolver::Effort effort);
    /// What solve() has found.
    const PlanDraft &draft() const { return found; }
    /// Keeps solve() within the budget where this cost, of its draft, is not. Mostly it is by itself.
    void limitCosts(const PlanCost &cost);

private:
    using Label = std::vector<int>; ///< literals; the first one says that it is that of a group

    void chooseMovable();
    bool canHelpBesides(int gang) const;
    void tieFixed();
    void addPositions(int gang);
    int closedLiteral(int link);
    void addLabels();
    void fixLabel(int net);
    Label classCodeOf(int net) const;
    Label &labelOf(int node);
    Label codeOf(bool isGroup, int number) const;
    void addLabelEquality(int premise, const Label &label, const Label &other);
    void addLinks();
    void addCouplings();
    void addUnknownRelay(const std::vector<int> &nets);
    void addFlow(const WayCosts::Flow &flow);
    int wayNodeOf(int node);
    int throughLiteral(int passive);
    std::vector<int> literalsOfCost(PlanCostLevel level) const;
    void readDraft();
    bool refuseStrayPins(DraftState &state);
    bool refuseDoubtfulNets(DraftState &state);
    void requireSupport(DraftState &state, int net);
    std::vector<int> openingLiterals(DraftState &state, int net);
    PlanCost fixedCost() const;

    int nodeOf(int net) { return nodes.leastOf(net); }

    const PlanProblem &problem;
    const WayCosts &costs;
    const PlanCost budget;
    const PlanningTime &time;
    SatSolver solver;
    PlanDraft found;

    std::vector<bool> moves;                 ///< by gang
    DisjointSets nodes;                      ///< nets that fixed gangs connect
    std::vector<std::vector<int>> positions; ///< by gang, literals of its positions; none of a fixed one
    std::vector<int> awayLiterals;           ///< by gang, of one that moves
    std::map<int, int> closedLiterals;       ///< of links that are closed in several positions
    std::vector<Label> labels;               ///< by node; empty of those that nothing can touch
    std::map<int, int> throughLiterals;      ///< by passive
    std::vector<int> classes;                ///< the least nets of what is connected at rest, of watched pins
    std::size_t labelSize = 0;
    std::array<bool, PlanCostLevels> isLimited = {};
};
}

#endif
