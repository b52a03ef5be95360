#ifndef VELK_PYTHON_RECORDS_H
#define VELK_PYTHON_RECORDS_H

#include <velk/facade/VelkSystem.h>
#include <velkplanning/VelkPlanner.h>

#include <pybind11/pybind11.h>

#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace VelkPython {

/// What a record of the library is in Python: the name of a NamedTuple of velk._values and, where it is made field by
/// field, what these are made of, in their order.
template <typename T>
struct Record;

using pybind11::detail::const_name;

template <>
struct Record<Velk::VelkPinInfo>
{
    static constexpr auto name = const_name("PartPin");
    static constexpr auto fields =
        std::make_tuple(&Velk::VelkPinInfo::number, &Velk::VelkPinInfo::name, &Velk::VelkPinInfo::type);
};

template <>
struct Record<Velk::VelkPartInfo>
{
    static constexpr auto name = const_name("Part");
    static constexpr auto fields =
        std::make_tuple(&Velk::VelkPartInfo::name, &Velk::VelkPartInfo::library, &Velk::VelkPartInfo::pins);
};

template <>
struct Record<Velk::VelkSufficientLimits>
{
    static constexpr auto name = const_name("SufficientLimits");
    static constexpr auto fields =
        std::make_tuple(&Velk::VelkSufficientLimits::maxSwitches, &Velk::VelkSufficientLimits::maxConnections,
                        &Velk::VelkSufficientLimits::switches, &Velk::VelkSufficientLimits::sideConnections);
};

template <>
struct Record<Velk::VelkReach>
{
    static constexpr auto name = const_name("Reach");
    static constexpr auto fields = std::make_tuple(&Velk::VelkReach::nets, &Velk::VelkReach::unpluggedPins,
                                                   &Velk::VelkReach::isAlone, &Velk::VelkReach::isExcluded);
};

template <>
struct Record<Velk::VelkRelayPosition>
{
    static constexpr auto name = const_name("Position");
    static constexpr auto fields = std::make_tuple(&Velk::VelkRelayPosition::name, &Velk::VelkRelayPosition::closed);
};

template <>
struct Record<Velk::VelkRelayPositions>
{
    static constexpr auto name = const_name("RelayPositions");
    static constexpr auto fields =
        std::make_tuple(&Velk::VelkRelayPositions::rule, &Velk::VelkRelayPositions::positions,
                        &Velk::VelkRelayPositions::gang, &Velk::VelkRelayPositions::isUnknown);
};

template <>
struct Record<Velk::VelkCoupling>
{
    static constexpr auto name = const_name("Coupling");
    static constexpr auto fields = std::make_tuple(&Velk::VelkCoupling::sets, &Velk::VelkCoupling::passives);
};

template <>
struct Record<Velk::VelkConnections>
{
    static constexpr auto name = const_name("Connections");
    static constexpr auto fields =
        std::make_tuple(&Velk::VelkConnections::connected, &Velk::VelkConnections::couplings);
};

template <>
struct Record<Velk::VelkFinding>
{
    static constexpr auto name = const_name("Finding");
    static constexpr auto fields =
        std::make_tuple(&Velk::VelkFinding::code, &Velk::VelkFinding::places, &Velk::VelkFinding::text,
                        &Velk::VelkFinding::advice, &Velk::VelkFinding::components, &Velk::VelkFinding::nets,
                        &Velk::VelkFinding::pins, &Velk::VelkFinding::files, &Velk::VelkFinding::message);
};

template <>
struct Record<Velk::VelkPlannedGroup>
{
    static constexpr auto name = const_name("Group");
    static constexpr auto fields = std::make_tuple(&Velk::VelkPlannedGroup::connections, &Velk::VelkPlannedGroup::pins,
                                                   &Velk::VelkPlannedGroup::through, &Velk::VelkPlannedGroup::nets,
                                                   &Velk::VelkPlannedGroup::sideConnections);
};

template <>
struct Record<Velk::VelkPlannedCoupling>
{
    static constexpr auto name = const_name("GroupCoupling");
    static constexpr auto fields = std::make_tuple(&Velk::VelkPlannedCoupling::groups, &Velk::VelkPlannedCoupling::pins,
                                                   &Velk::VelkPlannedCoupling::passives);
};

template <>
struct Record<Velk::VelkTransient>
{
    static constexpr auto name = const_name("Transient");
    static constexpr auto fields = std::make_tuple(&Velk::VelkTransient::isOnTheWayToRest, &Velk::VelkTransient::pins,
                                                   &Velk::VelkTransient::gangs);
};

template <>
struct Record<Velk::VelkComponentInfo>
{
    static constexpr auto name = const_name("Component");
};

template <>
struct Record<Velk::VelkNodeInfo>
{
    static constexpr auto name = const_name("Pin");
};

template <>
struct Record<Velk::VelkNetInfo>
{
    static constexpr auto name = const_name("Net");
};

template <>
struct Record<Velk::VelkRouteStep>
{
    static constexpr auto name = const_name("Step");
};

template <>
struct Record<Velk::VelkRoute>
{
    static constexpr auto name = const_name("Route");
};

template <>
struct Record<Velk::VelkPositionConflict>
{
    static constexpr auto name = const_name("PositionConflict");
};

template <>
struct Record<Velk::VelkNoRouteReason>
{
    static constexpr auto name = const_name("NoRouteReason");
};

template <>
struct Record<Velk::VelkCriticalComponent>
{
    static constexpr auto name = const_name("CriticalComponent");
};

template <>
struct Record<Velk::VelkCoverage>
{
    static constexpr auto name = const_name("Coverage");
};

template <>
struct Record<Velk::VelkPlannedStep>
{
    static constexpr auto name = const_name("Plan");
};
}

#endif
