#include <velkplanning/PlanFacts.h>

#include <QHash>
#include <QSet>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>

namespace Velk {

namespace {

constexpr int none = SwitchingModel::none;

void sortEachOnce(std::vector<int> &numbers)
{
    std::sort(numbers.begin(), numbers.end());
    numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
}

/// The groups that reach one of these sets of connected nets, ascending.
std::vector<int> groupsAt(const std::vector<int> &sets, const PlanExtents &extents)
{
    std::vector<int> groups;
    for (const int set : sets) {
        if (extents.groupAt(set) != none)
            groups.push_back(extents.groupAt(set));
    }
    sortEachOnce(groups);
    return groups;
}

/// Those that no group goes through.
std::vector<int> passivesLeft(const std::vector<int> &passives, const std::vector<int> &groups,
                              const PlanExtents &extents)
{
    QSet<int> goneThrough;
    for (const int group : groups)
        goneThrough += QSet<int>(extents.passivesOf(group).cbegin(), extents.passivesOf(group).cend());
    std::vector<int> left;
    std::copy_if(passives.cbegin(), passives.cend(), std::back_inserter(left),
                 [&](int passive) { return !goneThrough.contains(passive); });
    return left;
}
}

PlanFacts::PlanFacts(const ConnectionRequest &request, const Connectivity &atRest)
    : rest(atRest)
    , pinsOfNets(static_cast<std::size_t>(atRest.model().netCount()))
{
    const SwitchingModel &model = rest.model();
    QSet<QString> allowed;
    for (const int component : request.allowedComponents)
        allowed.insert(model.ref(component));
    for (const InterfacePin &pin : model.interfacePins()) {
        pinsOfNets[static_cast<std::size_t>(pin.net)].push_back(static_cast<int>(allowedPins.size()));
        allowedPins.push_back(request.allowsSideConnections || allowed.contains(pin.ref));
    }
    for (int component = 0; component < model.componentCount(); ++component) {
        const int gang = model.gangOf(component);
        if (gang != none && model.gang(gang).isUnknown)
            unknownRelays.push_back({component, model.contactNetsOf(component)});
    }
}

const InterfacePin &PlanFacts::pinOf(int number) const
{
    return rest.model().interfacePins()[static_cast<std::size_t>(number)];
}

/// In their order.
QList<InterfacePin> PlanFacts::pinsOf(std::vector<int> numbers) const
{
    std::sort(numbers.begin(), numbers.end());
    QList<InterfacePin> pins;
    for (const int number : numbers)
        pins.append(pinOf(number));
    return pins;
}

QList<InterfacePin> PlanFacts::sidePins(const PlanExtents &extents, int group, bool areAllowed) const
{
    const std::vector<int> &askedNets = extents.groups().at(group).nets;
    std::vector<int> found;
    for (const int net : extents.netsOf(group)) {
        if (std::binary_search(askedNets.cbegin(), askedNets.cend(), net))
            continue;
        std::copy_if(pinsAt(net).cbegin(), pinsAt(net).cend(), std::back_inserter(found),
                     [&](int pin) { return isAllowed(pin) == areAllowed; });
    }
    return pinsOf(std::move(found));
}

QList<PlannedCoupling> PlanFacts::couplings(const PlanExtents &extents) const
{
    QList<PlannedCoupling> result;
    for (const CoupledSets &coupled : extents.state().coupledSets()) {
        const std::vector<int> groups = groupsAt(coupled.sets, extents);
        if (groups.empty())
            continue;
        const QList<InterfacePin> pins = freePinsOf(coupled, extents);
        if (groups.size() > 1 || !pins.isEmpty())
            result.append({groups, pins, passivesLeft(coupled.passives, groups, extents)});
    }
    return result;
}

/// Its pins of interfaces in no extent.
QList<InterfacePin> PlanFacts::freePinsOf(const CoupledSets &coupled, const PlanExtents &extents) const
{
    std::vector<int> found;
    for (const int set : coupled.sets) {
        if (extents.groupAt(set) != none)
            continue;
        for (const int net : extents.state().netsOf(set))
            found.insert(found.end(), pinsAt(net).cbegin(), pinsAt(net).cend());
    }
    return pinsOf(std::move(found));
}

QList<QList<InterfacePin>> PlanFacts::newlyConnected(const PlanExtents &extents) const
{
    QList<QList<InterfacePin>> sets;
    QHash<int, qsizetype> places; // in it, by the number of the set of nets
    for (const InterfacePin &pin : rest.model().interfacePins()) {
        const int set = extents.state().setOf(pin.net);
        if (extents.groupAt(set) != none)
            continue;
        if (!places.contains(set)) {
            places.insert(set, sets.size());
            sets.append(QList<InterfacePin>());
        }
        sets[places.value(set)].append(pin);
    }
    sets.removeIf([this](const QList<InterfacePin> &pins) {
        return std::all_of(pins.cbegin(), pins.cend(),
                           [&](const InterfacePin &pin) { return rest.areConnected(pin.net, pins.first().net); });
    });
    return sets;
}

std::vector<PlanFacts::TouchingRelay> PlanFacts::touchingRelays(const PlanExtents &extents) const
{
    QSet<int> foreignSets;
    for (int pin = 0; pin < static_cast<int>(allowedPins.size()); ++pin) {
        const int set = extents.state().setOf(pinOf(pin).net);
        if (extents.groupAt(set) == none && !isAllowed(pin))
            foreignSets.insert(set);
    }
    std::vector<TouchingRelay> touching;
    for (const UnknownRelay &relay : unknownRelays) {
        std::vector<int> sets;
        for (const int net : relay.nets)
            sets.push_back(extents.state().setOf(net));
        const bool touchesOthers =
            std::any_of(sets.cbegin(), sets.cend(), [&](int set) { return foreignSets.contains(set); });
        if (const auto groups = groupsAt(sets, extents); !groups.empty())
            touching.push_back({relay.component, groups, touchesOthers});
    }
    return touching;
}
}
