#include <velkplanning/PlanCheck.h>

namespace Velk {

PlanCheck::PlanCheck(const ConnectionRequest &wanted, const Connectivity &atRest)
    : request(wanted)
    , rest(atRest)
{
}

ConnectionPlan PlanCheck::planWith(const std::vector<int> &, const std::vector<std::vector<int>> &) const
{
    return {};
}

QStringList PlanCheck::faultsOf(const ConnectionPlan &, const std::vector<int> &) const
{
    return {};
}
}
