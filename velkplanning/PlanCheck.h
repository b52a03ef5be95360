#ifndef VELKPLANNING_PLANCHECK_H
#define VELKPLANNING_PLANCHECK_H

#include <velkplanning/ConnectionGroups.h>
#include <velkplanning/ConnectionPlan.h>
#include <velkplanning/ConnectionRequest.h>
#include <velkplanning/PlanFacts.h>
#include <velkplanning/PlanParts.h>

#include <velk/switching/Connectivity.h>

#include <QStringList>

#include <vector>

namespace Velk {

/// Checks what relays and passives make of a request, by what Connectivity tells and by nothing that planning uses.
class PlanCheck
{
public:
    /// \a atRest is the state of all relays at rest. It, and the request, have to stay.
    PlanCheck(const ConnectionRequest &wanted, const Connectivity &atRest);

    /// All that there is to tell of a plan with these positions, each group going through these passives (in the order
    /// of groupsOf()); the result is Feasible. It need not be a plan: nothing is checked.
    ConnectionPlan planWith(const std::vector<int> &positions, const std::vector<std::vector<int>> &through) const;
    /// What is wrong with the positions and passives of a plan, as "J2#3.5 reaches U1#1.2"; none where they hold.
    /// Gangs that keep their position \a before, where none stands for all at rest, need not matter with
    /// PlanAim::FewestChanges.
    QStringList faultsOf(const ConnectionPlan &plan, const std::vector<int> &before) const;

private:
    using PassivesOfGroups = std::vector<std::vector<int>>;

    Connectivity stateWith(const std::vector<int> &positions) const;
    QStringList forbiddenIn(const ConnectionPlan &plan) const;
    QStringList faultsIn(const PlanExtents &extents) const;
    bool holdsIn(const PlanExtents &extents) const;
    std::vector<PlanPart> partsOf(const Connectivity &state, const PassivesOfGroups &through,
                                  const std::vector<int> &before) const;
    bool holdsWithout(const PlanPart &part, Connectivity &state, const PassivesOfGroups &through) const;
    QStringList needlessIn(Connectivity &state, const PassivesOfGroups &through, const std::vector<int> &before) const;
    QString nameOf(int group) const;

    // What each rule finds.
    QStringList untiedPins(const PlanExtents &extents) const;
    QStringList groupsThatMeet(const PlanExtents &extents) const;
    QStringList sideConnections(const PlanExtents &extents) const;
    QStringList excludedNets(const PlanExtents &extents) const;
    QStringList unknownRelays(const PlanExtents &extents) const;
    QStringList newConnections(const PlanExtents &extents) const;
    QStringList coupledGroups(const PlanExtents &extents) const;
    using Rule = QStringList (PlanCheck::*)(const PlanExtents &extents) const;
    static const Rule rules[];

    const ConnectionRequest &request;
    const Connectivity &rest;
    const QList<ConnectionGroup> groups;
    const PlanFacts facts;
};
}

#endif
