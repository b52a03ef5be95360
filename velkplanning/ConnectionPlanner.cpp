#include <velkplanning/ConnectionPlanner.h>

namespace Velk {

class ConnectionPlannerPrivate
{
public:
    SwitchingModel model;
};

ConnectionPlanner::ConnectionPlanner(const SwitchingModel &model)
    : d(std::make_shared<const ConnectionPlannerPrivate>(ConnectionPlannerPrivate{model}))
{
}

ConnectionPlanner::~ConnectionPlanner() = default;
ConnectionPlanner::ConnectionPlanner(const ConnectionPlanner &other) = default;
ConnectionPlanner &ConnectionPlanner::operator=(const ConnectionPlanner &other) = default;
ConnectionPlanner::ConnectionPlanner(ConnectionPlanner &&other) noexcept = default;
ConnectionPlanner &ConnectionPlanner::operator=(ConnectionPlanner &&other) noexcept = default;

const SwitchingModel &ConnectionPlanner::model() const
{
    return d->model;
}

ConnectionPlan ConnectionPlanner::plan(const ConnectionRequest &, const std::vector<int> &,
                                       const PlanningLimits &) const
{
    return {PlanResult::Unknown, {}, {}, {}, {}, {}, {}, {}};
}
}
