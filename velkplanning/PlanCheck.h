#ifndef VELKPLANNING_PLANCHECK_H
#define VELKPLANNING_PLANCHECK_H

#include <velkplanning/ConnectionPlan.h>
#include <velkplanning/ConnectionRequest.h>

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
    /// What is wrong with it, as "K3#1, K4#1 tie ..."; none for a plan. Gangs that keep their position \a before need
    /// not matter with PlanAim::FewestChanges.
    QStringList faultsOf(const ConnectionPlan &plan, const std::vector<int> &before) const;

private:
    const ConnectionRequest &request;
    const Connectivity &rest;
};
}

#endif
