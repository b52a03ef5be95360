#include <velkplanning/PlanCheck.h>

#include <velkplanning/PlanExtents.h>

#include <QSet>

#include <algorithm>
#include <cstddef>
#include <iterator>

using namespace Qt::StringLiterals;

namespace Velk {

namespace {

bool isAskedFor(int net, const ConnectionGroup &group)
{
    return std::binary_search(group.nets.cbegin(), group.nets.cend(), net);
}

QString nameOfPin(const InterfacePin &pin)
{
    return pin.ref + u'.' + pin.number;
}

QString namesOfPins(const QList<InterfacePin> &pins)
{
    QStringList names;
    for (const InterfacePin &pin : pins)
        names.append(nameOfPin(pin));
    return names.join(u", "_s);
}
}

// All that putting a gang to rest or leaving a passive out can break.
const PlanCheck::Rule PlanCheck::rules[] = {
    &PlanCheck::untiedPins,    &PlanCheck::groupsThatMeet, &PlanCheck::sideConnections, &PlanCheck::excludedNets,
    &PlanCheck::unknownRelays, &PlanCheck::newConnections, &PlanCheck::coupledGroups};

PlanCheck::PlanCheck(const ConnectionRequest &wanted, const Connectivity &atRest)
    : request(wanted)
    , rest(atRest)
    , groups(groupsOf(wanted.connections, atRest.model().netCount()))
    , facts(wanted, atRest)
{
}

ConnectionPlan PlanCheck::planWith(const std::vector<int> &positions, const PassivesOfGroups &through) const
{
    const Connectivity state = stateWith(positions);
    const PlanExtents extents(state, groups, through);
    ConnectionPlan plan{PlanResult::Feasible, positions, {}, facts.couplings(extents), {}, {}, {}, {}};
    for (int i = 0; i < groups.size(); ++i) {
        const ConnectionGroup &group = groups.at(i);
        plan.groups.append({group.connections, group.pins, extents.passivesOf(i), extents.netsOf(i),
                            facts.sidePins(extents, i, true)});
    }
    if (request.allowsSideConnections)
        plan.alsoConnected = facts.newlyConnected(extents);
    for (const auto &relay : facts.touchingRelays(extents))
        plan.unknown.push_back(relay.component);
    return plan;
}

QStringList PlanCheck::faultsOf(const ConnectionPlan &plan, const std::vector<int> &before) const
{
    Connectivity state = stateWith(plan.positions);
    PassivesOfGroups through;
    for (const PlannedGroup &group : plan.groups)
        through.push_back(group.through);
    return forbiddenIn(plan) + faultsIn(PlanExtents(state, groups, through)) + needlessIn(state, through, before);
}

Connectivity PlanCheck::stateWith(const std::vector<int> &positions) const
{
    Connectivity state = rest;
    state.setPositions(positions);
    return state;
}

/// Components that are used though the request or they themselves exclude it.
QStringList PlanCheck::forbiddenIn(const ConnectionPlan &plan) const
{
    const SwitchingModel &model = rest.model();
    const QSet<int> excluded(request.excludedComponents.cbegin(), request.excludedComponents.cend());
    QStringList faults;
    for (const int component : request.excludedComponents) {
        const int gang = model.gangOf(component);
        if (gang != SwitchingModel::none && plan.positions[static_cast<std::size_t>(gang)] != 0)
            faults.append(u"%1 is excluded and not at rest"_s.arg(model.ref(component)));
    }
    for (int group = 0; group < plan.groups.size(); ++group) {
        for (const int number : plan.groups.at(group).through) {
            const PassiveComponent &passive = model.passives()[static_cast<std::size_t>(number)];
            if (!passive.isWay || excluded.contains(model.componentOf(passive.ref)))
                faults.append(u"%1 goes through %2"_s.arg(nameOf(group), passive.ref));
        }
    }
    return faults;
}

QStringList PlanCheck::faultsIn(const PlanExtents &extents) const
{
    QStringList faults;
    for (const Rule rule : rules)
        faults += (this->*rule)(extents);
    return faults;
}

bool PlanCheck::holdsIn(const PlanExtents &extents) const
{
    return std::all_of(std::begin(rules), std::end(rules), [&](Rule rule) { return (this->*rule)(extents).isEmpty(); });
}

QStringList PlanCheck::untiedPins(const PlanExtents &extents) const
{
    QStringList faults;
    for (const int group : extents.untiedGroups())
        faults.append(u"%1 are not all tied together"_s.arg(namesOfPins(groups.at(group).pins)));
    return faults;
}

QStringList PlanCheck::groupsThatMeet(const PlanExtents &extents) const
{
    QStringList faults;
    for (const auto &[group, other] : extents.meetings())
        faults.append(u"%1 is tied to %2"_s.arg(nameOf(group), nameOf(other)));
    return faults;
}

QStringList PlanCheck::sideConnections(const PlanExtents &extents) const
{
    QStringList faults;
    for (int group = 0; group < groups.size(); ++group) {
        if (const auto pins = facts.sidePins(extents, group, false); !pins.isEmpty())
            faults.append(u"%1 reaches %2"_s.arg(nameOf(group), namesOfPins(pins)));
    }
    return faults;
}

QStringList PlanCheck::excludedNets(const PlanExtents &extents) const
{
    QStringList faults;
    for (const int net : request.excludedNets) {
        const int group = extents.groupAtNet(net);
        if (group != SwitchingModel::none && !isAskedFor(net, groups.at(group)))
            faults.append(u"%1 reaches %2"_s.arg(nameOf(group), rest.model().netNames(net).join(u'+')));
    }
    return faults;
}

QStringList PlanCheck::unknownRelays(const PlanExtents &extents) const
{
    QStringList faults;
    if (request.trustsUnknown)
        return faults;
    for (const auto &relay : facts.touchingRelays(extents)) {
        if (relay.groups.size() > 1 || relay.touchesOthers)
            faults.append(
                u"%1 may tie %2 to other pins"_s.arg(rest.model().ref(relay.component), nameOf(relay.groups.front())));
    }
    return faults;
}

QStringList PlanCheck::newConnections(const PlanExtents &extents) const
{
    QStringList faults;
    if (request.allowsSideConnections)
        return faults;
    for (const QList<InterfacePin> &pins : facts.newlyConnected(extents))
        faults.append(u"%1 are tied together"_s.arg(namesOfPins(pins)));
    return faults;
}

QStringList PlanCheck::coupledGroups(const PlanExtents &extents) const
{
    QStringList faults;
    if (!request.forbidsCouplings)
        return faults;
    for (const PlannedCoupling &coupling : facts.couplings(extents)) {
        if (coupling.groups.size() > 1)
            faults.append(u"%1 is coupled with %2"_s.arg(nameOf(coupling.groups[0]), nameOf(coupling.groups[1])));
    }
    return faults;
}

/// All that has to matter.
std::vector<PlanPart> PlanCheck::partsOf(const Connectivity &state, const PassivesOfGroups &through,
                                         const std::vector<int> &before) const
{
    constexpr int none = SwitchingModel::none;
    std::vector<PlanPart> parts;
    for (int gang = 0; gang < rest.model().gangCount(); ++gang) {
        const int position = state.position(gang);
        const bool isKept = request.aim == PlanAim::FewestChanges && !before.empty() &&
                            before[static_cast<std::size_t>(gang)] == position;
        if (position != 0 && !isKept)
            parts.push_back({gang, none, none});
    }
    for (int group = 0; group < groups.size(); ++group) {
        for (const int passive : through[static_cast<std::size_t>(group)])
            parts.push_back({none, group, passive});
    }
    return parts;
}

bool PlanCheck::holdsWithout(const PlanPart &part, Connectivity &state, const PassivesOfGroups &through) const
{
    if (part.gang == SwitchingModel::none) {
        PassivesOfGroups fewer = through;
        auto &left = fewer[static_cast<std::size_t>(part.group)];
        left.erase(std::find(left.begin(), left.end(), part.passive));
        return holdsIn(PlanExtents(state, groups, fewer));
    }
    const int position = state.position(part.gang);
    state.setPosition(part.gang, 0);
    const bool holds = holdsIn(PlanExtents(state, groups, through));
    state.setPosition(part.gang, position);
    return holds;
}

QStringList PlanCheck::needlessIn(Connectivity &state, const PassivesOfGroups &through,
                                  const std::vector<int> &before) const
{
    const SwitchingModel &model = rest.model();
    const std::vector<PlanPart> parts = partsOf(state, through, before);
    const std::vector<bool> isTied = areTiedWithout(parts, state, groups);
    QStringList faults;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const auto [gang, group, passive] = parts[i];
        if (!isTied[i] || !holdsWithout(parts[i], state, through))
            continue;
        if (gang != SwitchingModel::none)
            faults.append(u"%1 need not leave rest"_s.arg(model.gang(gang).components.join(u", "_s)));
        else
            faults.append(u"%1 need not go through %2"_s.arg(nameOf(group),
                                                             model.passives()[static_cast<std::size_t>(passive)].ref));
    }
    return faults;
}

/// By its first pin.
QString PlanCheck::nameOf(int group) const
{
    return nameOfPin(groups.at(group).pins.first());
}
}
