#ifndef VELKPLANNING_VELKPLANNER_H
#define VELKPLANNING_VELKPLANNER_H

#include <velkplanning/VelkPlanningExport.h>

#include <velk/facade/VelkSystem.h>

#include <chrono>
#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Velk {

class VelkPlannerPrivate;

/// A connection that is to be, between pins of any components.
struct VelkConnection
{
    VelkRouteEnd from; ///< as VelkSystem::routes() takes it; it has to lie on a net
    VelkRouteEnd to;   ///< likewise
};

/// Connections that are to be there at once, and what they have to keep out of.
struct VelkPlanRequest
{
    /// None is a request too: nothing is to be connected. Connections that share a net, directly or over others, are
    /// one group.
    std::vector<VelkConnection> connections;
    /// Relays that stay at rest, and passive components that no group goes through; with those that the system keeps
    /// out. Each is a reference or, as "KEY=VALUE", all components with the property.
    std::vector<std::string> withoutComponents = {};
    /// Names of nets that no group reaches, unless a pin of it lies there; with those that the system keeps out.
    std::vector<std::string> withoutNets = {};
    /// Interface components whose pins any group may reach, written as withoutComponents.
    std::vector<std::string> allowedComponents = {};
    bool allowsSideConnections = false; ///< groups may reach the pins of all interface components
    bool forbidsCouplings = false;      ///< no passive components may couple two groups
    bool trustsUnknown = false;         ///< relays whose positions are not known connect nothing
    /// Of all plans one is wanted that moves the fewest relays; else one with the fewest away from rest.
    bool fewestChanges = false;

    /// After it the best plan so far is the answer, as Feasible, or Unknown without one. None: until it is known.
    std::optional<std::chrono::milliseconds> timeLimit = {};
    /// Asked now and then, in the thread that asks; when it returns true it is as if the time was up.
    std::function<bool()> isCalledOff = {};
};

/// What is known of a request.
enum class VelkPlanResult
{
    Optimal,    ///< a plan, and that none is better
    Feasible,   ///< a plan, but the time was up before it was known whether there is a better one
    Impossible, ///< there is no plan
    Unknown,    ///< the time was up before one was found
};

/// The way that a connection takes in a plan.
struct VelkPlannedWay
{
    std::vector<VelkRouteStep> steps; ///< none where both pins lie on one net
    std::string lastNet;              ///< the name of the net that holds the pin at the end
};

/// Connections that are tied together, with all that they reach.
struct VelkPlannedGroup
{
    std::vector<std::size_t> connections;      ///< by their positions in the request, from 0, ascending
    std::vector<VelkNodeInfo> pins;            ///< that were asked for, each once; by reference, then number
    std::vector<std::string> through;          ///< references of the passive components that it goes through; sorted
    std::vector<std::string> nets;             ///< names of all nets that it reaches; sorted
    std::vector<VelkNodeInfo> sideConnections; ///< pins on them that are there because they are allowed, like pins
};

/// Groups, and pins of interface components that belong to none, that passive components couple.
struct VelkPlannedCoupling
{
    std::vector<std::size_t> groups;   ///< by their positions in the plan, from 0, ascending; one at least
    std::vector<VelkNodeInfo> pins;    ///< of no group; by reference, then number
    std::vector<std::string> passives; ///< references of those that couple, but no group goes through; sorted
};

/// The answer to a request.
struct VelkPlan
{
    VelkPlanResult result; ///< tells which of the others hold something

    // Of a plan:
    std::map<std::string, int> positions; ///< of all relays away from rest: what VelkSystem::connected() takes
    std::map<std::string, std::string> positionNames; ///< of these positions, as far as they are drawn with one
    std::vector<VelkPlannedWay> ways;                 ///< for each connection of the request one
    std::vector<VelkPlannedGroup> groups;             ///< in the order of their first connections
    std::vector<VelkPlannedCoupling> couplings;       ///< what passives couple with these groups
    /// Where all side connections are allowed: sets of pins of no group that are connected, but not at rest.
    std::vector<std::vector<VelkNodeInfo>> alsoConnected;
    std::vector<std::string> unknown; ///< references of relays whose positions are not known and that touch a group

    // Where there is none:
    /// Connections, by their positions in the request, for which there is no plan, but one without any of them.
    std::vector<std::size_t> conflict;
    /// Names of nets of which more groups of the conflict need one each than there are. None where lines do not run
    /// out.
    std::vector<std::string> bottleneck;
};

/// Pins that may touch for a moment, while relays move.
struct VelkTransient
{
    bool isOnTheWayToRest;          ///< while relays go to rest; else while others leave it
    std::vector<VelkNodeInfo> pins; ///< all that may be tied together then; by reference, then number
    /// The relays that move and have a part in it, those together that take the same position.
    std::vector<std::vector<std::string>> gangs;
};

/// A request with a name.
struct VelkPlanStep
{
    std::string name;        ///< any text
    VelkPlanRequest request; ///< all that is to be connected in this step
};

/// What to do in a step. First all relays that leave their position go to rest, then those that do not stay there go to
/// the new one.
struct VelkPlannedStep
{
    std::string name;                      ///< as given
    VelkPlan plan;                         ///< where it is none, the relays stay as they were
    std::vector<std::string> toRest;       ///< references of relays; sorted
    std::vector<std::string> toSet;        ///< references of relays, to the positions of the plan; sorted
    std::vector<VelkTransient> transients; ///< for any order in which the relays of each half move
};

/// True if all members are equal.
VELKPLANNING_EXPORT bool operator==(const VelkPlannedWay &a, const VelkPlannedWay &b);
/// True if all members are equal.
VELKPLANNING_EXPORT bool operator==(const VelkPlannedGroup &a, const VelkPlannedGroup &b);
/// True if all members are equal.
VELKPLANNING_EXPORT bool operator==(const VelkPlannedCoupling &a, const VelkPlannedCoupling &b);
/// True if all members are equal.
VELKPLANNING_EXPORT bool operator==(const VelkPlan &a, const VelkPlan &b);
/// True if all members are equal.
VELKPLANNING_EXPORT bool operator==(const VelkTransient &a, const VelkTransient &b);
/// True if all members are equal.
VELKPLANNING_EXPORT bool operator==(const VelkPlannedStep &a, const VelkPlannedStep &b);

/// Finds positions of relays that make several connections of a system at once and nothing else, as few relays as
/// possible being away from rest, or proves that there are none; for callers without Qt. ConnectionPlanner says what a
/// plan holds.
///
///     const Velk::VelkPlanner planner(system);
///     const auto plan = planner.plan({{{{{{"Dev", "DMM"}}, "HI"}, {{}, "OUT", "J2"}}}});
///     for (const auto &[relay, position] : plan.positions)
///         std::cout << relay << " = " << position << '\n';
///
/// A planner never changes: copies cost nothing, several threads may ask one and the same, and nothing is logged. The
/// same system and requests give the same plans, unless the time was up.
class VELKPLANNING_EXPORT VelkPlanner
{
public:
    /// On a system with the exclusions that it has now; it may go. Throws a VelkSystemException where positions of
    /// relays are wrong.
    explicit VelkPlanner(const VelkSystem &system);
    ~VelkPlanner();
    VelkPlanner(const VelkPlanner &other);
    VelkPlanner &operator=(const VelkPlanner &other);
    /// One that was moved from may be assigned to or destroyed, nothing else.
    VelkPlanner(VelkPlanner &&other) noexcept;
    VelkPlanner &operator=(VelkPlanner &&other) noexcept;

    /// The best plan, while relays have the positions \a before, which VelkPlanRequest::fewestChanges alone asks for.
    /// Throws a VelkSystemException for a name that is not there, for a pin on no net, and for positions that cannot
    /// be.
    VelkPlan plan(const VelkPlanRequest &request, const std::map<std::string, int> &before = {}) const;

    /// The same with what moves, and what may touch meanwhile. \a through are references of the passive components that
    /// what is connected before goes through, as the groups of a plan have them.
    VelkPlannedStep planStep(const VelkPlanStep &step, const std::map<std::string, int> &before = {},
                             const std::vector<std::string> &through = {}) const;

    /// Plans one step after the other, each with the relays as the one before leaves them, the first with all of them
    /// at rest. Throws as plan() does.
    std::vector<VelkPlannedStep> planSteps(const std::vector<VelkPlanStep> &steps) const;

private:
    std::shared_ptr<const VelkPlannerPrivate> d;
};
}

#endif
