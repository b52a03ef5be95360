#ifndef VELK_PYTHON_SYSTEM_H
#define VELK_PYTHON_SYSTEM_H

#include "python/native/ValueTypes.h"
#include "python/native/Values.h"

#include <memory>
#include <mutex>

namespace VelkPython {

using Properties = std::map<std::string, std::string>;
using Texts = std::vector<std::string>;

/// A VelkSystem, with its VelkPlanner, whose answers are values of Python. The interpreter lock is released while it
/// works, so several threads may ask it at once.
class System
{
public:
    explicit System(const Velk::VelkSystem &opened);

    /// The same without these, too; it shares the values.
    System keepingOut(const Texts &components, const Texts &nets) const;

    const Velk::VelkSystem &asked() const { return system; }

    Value<std::vector<Velk::VelkComponentInfo>> components(const Properties &properties) const;
    Value<std::vector<Velk::VelkPartInfo>> parts() const;
    Value<std::vector<Velk::VelkNetInfo>> nets() const;
    Value<Velk::VelkComponentInfo> component(const std::string &ref) const;
    Value<Velk::VelkPartInfo> part(const std::string &name) const;
    Value<Velk::VelkNetInfo> net(const std::string &name) const;
    Value<std::vector<Velk::VelkNodeInfo>> pins(const std::string &ref) const;
    Value<Velk::VelkNodeInfo> pin(const Velk::VelkRouteEnd &end) const;

    Value<std::vector<Velk::VelkRoute>> routes(const Velk::VelkRouteEnd &source, const Velk::VelkRouteEnd &dut,
                                               Velk::VelkSearchOptions options) const;
    Value<Velk::VelkNoRouteReason> whyNoRoute(const Velk::VelkRouteEnd &source, const Velk::VelkRouteEnd &dut,
                                              Velk::VelkSearchOptions options) const;
    /// \a progress is None or called with the numbers of source pins that are done and of all.
    Value<Velk::VelkCoverage> coverage(const Properties &sources, const Properties &duts,
                                       const Velk::VelkSearchOptions &options, bool withCritical,
                                       const py::object &progress) const;
    Value<Velk::VelkPlannedStep> plan(const std::string &name, Velk::VelkPlanRequest request,
                                      const std::map<std::string, int> &before, const Texts &through) const;

    Value<Velk::VelkRelayPositions> positions(const std::string &ref) const;
    Value<Velk::VelkConnections> connected(const std::map<std::string, int> &positions) const;
    Value<std::vector<Velk::VelkFinding>> check(const Texts &ignored) const;

private:
    const Velk::VelkPlanner &planner() const;

    /// What many questions have in common.
    template <typename T, typename Question>
    Value<T> answer(const Question &question) const;

    struct LazyPlanner
    {
        std::mutex mutex;
        std::optional<Velk::VelkPlanner> planner;
    };

    Velk::VelkSystem system;
    std::shared_ptr<Values> values;
    std::shared_ptr<LazyPlanner> lazyPlanner; ///< made for the first plan
};
}

#endif
