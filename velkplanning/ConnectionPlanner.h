#ifndef VELKPLANNING_CONNECTIONPLANNER_H
#define VELKPLANNING_CONNECTIONPLANNER_H

#include <velkplanning/ConnectionPlan.h>
#include <velkplanning/ConnectionRequest.h>
#include <velkplanning/VelkPlanningExport.h>

#include <velk/switching/SwitchingModel.h>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace Velk {

class ConnectionPlannerPrivate;

/// How long a plan may take.
struct PlanningLimits
{
    /// Then the best plan so far is returned, as Feasible, or Unknown, where neither a plan nor a conflict is found
    /// yet. None: until it is known.
    std::optional<std::chrono::milliseconds> time = {};
    /// Asked now and then, in the thread that plans; when it returns true it is as if the time was up.
    std::function<bool()> isCalledOff = {};
};

/// Finds positions of relays that make several connections at once and nothing else, as few relays as possible being
/// away from rest, or proves that there are none. Given time, it finds a plan if there is one.
///
/// A plan ties the nets of each group together, by closed contacts and by passives that the group goes through. What
/// else is reached that way is its extent. Extents have no net in common, and hold no pin of an interface that was not
/// asked for, but on the nets of those that were and as far as the request allows it. Pins of interfaces in no extent
/// are not connected with one another unless they are at rest. A relay whose positions are not known touches no two
/// extents, and no extent together with a net that is connected with a pin of an interface, unless the request trusts
/// it. Each gang away from rest and each passive gone through is needed for this.
///
/// The same model, request and positions before give the same plan, unless the time was up. A planner does not change:
/// threads may ask it at once.
class VELKPLANNING_EXPORT ConnectionPlanner
{
public:
    /// Takes time in proportion to the nets of the model and to the contacts of all positions.
    explicit ConnectionPlanner(const SwitchingModel &model);
    ~ConnectionPlanner();
    ConnectionPlanner(const ConnectionPlanner &other);
    ConnectionPlanner &operator=(const ConnectionPlanner &other);
    /// One that was moved from may be assigned to or destroyed, nothing else.
    ConnectionPlanner(ConnectionPlanner &&other) noexcept;
    ConnectionPlanner &operator=(ConnectionPlanner &&other) noexcept;

    const SwitchingModel &model() const; ///< a copy of the one that was given

    /// The best plan, while each gang has the position \a before, which count for PlanAim::FewestChanges alone; none
    /// stands for all at rest. Throws an EDAException for a connection to a pin on no net of a name, for numbers that
    /// the model does not have, and where the model has errors.
    ConnectionPlan plan(const ConnectionRequest &request, const std::vector<int> &before = {},
                        const PlanningLimits &limits = {}) const;

private:
    std::shared_ptr<const ConnectionPlannerPrivate> d;
};
}

#endif
