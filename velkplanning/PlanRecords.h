#ifndef VELKPLANNING_PLANRECORDS_H
#define VELKPLANNING_PLANRECORDS_H

#include <velkplanning/PlannedStep.h>
#include <velkplanning/VelkPlanner.h>

#include <velk/facade/SystemModel.h>

#include <string>
#include <vector>

namespace Velk {

/// Makes records for callers without Qt of the numbers of plans.
class PlanRecords
{
public:
    /// \a planned must stay.
    explicit PlanRecords(const SystemModel &planned);

    VelkPlan planOf(const PlannedStep &step) const;
    VelkPlannedStep stepOf(const std::string &name, const PlannedStep &step) const;

private:
    VelkPlannedWay of(const ConnectionWay &way, const std::vector<int> &positions) const;
    VelkRouteStep of(const WayStep &step, const std::vector<int> &positions) const;
    VelkPlannedGroup of(const PlannedGroup &group) const;
    VelkPlannedCoupling of(const PlannedCoupling &coupling) const;
    VelkTransient of(const Transient &transient) const;
    void addPositions(int gang, int position, VelkPlan &plan) const;
    std::vector<VelkNodeInfo> of(const QList<InterfacePin> &pins) const;
    std::vector<std::string> relaysOf(const std::vector<int> &gangs) const;
    std::string positionName(int component, int position) const;
    std::string netName(int net) const;
    std::vector<std::string> netNames(const std::vector<int> &nets) const;
    std::vector<std::string> passives(const std::vector<int> &numbers) const;
    std::vector<std::string> components(const std::vector<int> &numbers) const;

    const SystemModel &system;
    const SwitchingModel &model;
};
}

#endif
