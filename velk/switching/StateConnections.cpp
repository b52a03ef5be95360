#include <velk/switching/StateConnections.h>

#include <algorithm>
#include <cstddef>
#include <vector>

namespace Velk {

namespace {

/// The interface pins by the set of connected nets that they lie in.
class PinSets
{
public:
    explicit PinSets(const Connectivity &state)
        : places(static_cast<std::size_t>(state.model().netCount()), SwitchingModel::none)
    {
        for (const InterfacePin &pin : state.model().interfacePins()) {
            int &place = places[static_cast<std::size_t>(state.setOf(pin.net))];
            if (place == SwitchingModel::none) {
                place = static_cast<int>(sets.size());
                sets.append(QList<InterfacePin>());
            }
            sets[place].append(pin);
        }
    }

    /// Of those with pins in these sets of nets, in order.
    std::vector<int> placesOf(const std::vector<int> &netSets) const
    {
        std::vector<int> result;
        for (const int set : netSets) {
            if (const int place = places[static_cast<std::size_t>(set)]; place != SwitchingModel::none)
                result.push_back(place);
        }
        std::sort(result.begin(), result.end());
        return result;
    }

    QList<QList<InterfacePin>> sets; ///< in the order of their first pins

private:
    std::vector<int> places; ///< by the number of the set of nets
};

bool isOnSeveralNets(const QList<InterfacePin> &pins)
{
    return std::any_of(pins.cbegin(), pins.cend(),
                       [&](const InterfacePin &pin) { return pin.net != pins.first().net; });
}

PinCoupling couplingOf(const CoupledSets &coupled, const std::vector<int> &places, const PinSets &pinSets,
                       const SwitchingModel &model)
{
    PinCoupling coupling;
    for (const int place : places)
        coupling.sets.append(pinSets.sets.at(place));
    for (const int passive : coupled.passives)
        coupling.passives.append(model.passives()[static_cast<std::size_t>(passive)].ref);
    return coupling;
}

QList<PinCoupling> couplingsIn(const Connectivity &state, const PinSets &pinSets)
{
    std::vector<std::pair<int, PinCoupling>> couplings; // with the place of their first set
    for (const CoupledSets &coupled : state.coupledSets()) {
        const auto places = pinSets.placesOf(coupled.sets);
        if (places.size() > 1)
            couplings.emplace_back(places.front(), couplingOf(coupled, places, pinSets, state.model()));
    }
    std::sort(couplings.begin(), couplings.end(), [](const auto &a, const auto &b) { return a.first < b.first; });
    QList<PinCoupling> result;
    for (const auto &[place, coupling] : couplings)
        result.append(coupling);
    return result;
}
}

StateConnections connectionsIn(const Connectivity &state)
{
    const PinSets pinSets(state);
    StateConnections connections;
    std::copy_if(pinSets.sets.cbegin(), pinSets.sets.cend(), std::back_inserter(connections.connected),
                 isOnSeveralNets);
    connections.couplings = couplingsIn(state, pinSets);
    return connections;
}
}
