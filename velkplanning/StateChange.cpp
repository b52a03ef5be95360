#include <velkplanning/StateChange.h>

#include <velk/model/DisjointSets.h>

#include <algorithm>
#include <cstddef>
#include <map>
#include <tuple>

namespace Velk {

namespace {

/// What closed contacts and passives that groups go through tie together.
class TiedNets
{
public:
    explicit TiedNets(const SwitchingModel &switchingModel)
        : model(switchingModel)
        , sets(switchingModel.netCount())
    {
    }

    TiedNets(const SwitchingModel &switchingModel, const SwitchedState &state)
        : TiedNets(switchingModel)
    {
        close(state.positions);
        goThrough(state.through);
    }

    void close(const std::vector<int> &positions)
    {
        for (int gang = 0; gang < model.gangCount(); ++gang) {
            for (const NetContact &contact : model.contactsOf(gang, positions[static_cast<std::size_t>(gang)]))
                sets.unite(contact.net, contact.otherNet);
        }
    }

    void goThrough(const std::vector<int> &passives)
    {
        for (const int passive : passives) {
            const auto &nets = model.passives()[static_cast<std::size_t>(passive)].nets;
            for (const int net : nets)
                sets.unite(nets.front(), net);
        }
    }

    int setOf(int net) { return sets.leastOf(net); }

private:
    const SwitchingModel &model;
    DisjointSets sets;
};

class ChangeFinder
{
public:
    ChangeFinder(const SwitchingModel &switchingModel, const SwitchedState &stateBefore,
                 const SwitchedState &stateAfter)
        : model(switchingModel)
        , before(stateBefore)
        , after(stateAfter)
        , tiedBefore(switchingModel, stateBefore)
        , tiedAfter(switchingModel, stateAfter)
    {
    }

    StateChange change()
    {
        StateChange result;
        std::vector<int> between; // positions, after the first half
        for (int gang = 0; gang < model.gangCount(); ++gang) {
            const int from = before.positions[static_cast<std::size_t>(gang)];
            const int to = after.positions[static_cast<std::size_t>(gang)];
            between.push_back(from == to ? from : 0);
            if (from != between.back())
                result.toRest.push_back(gang);
            if (to != between.back())
                result.toSet.push_back(gang);
        }
        addTransients(true, result.toRest, before.positions, between, result.transients);
        addTransients(false, result.toSet, between, after.positions, result.transients);
        return result;
    }

private:
    /// Those of the half in which these gangs move, in any order, from some positions to others.
    void addTransients(bool isOnTheWayToRest, const std::vector<int> &moving, const std::vector<int> &from,
                       const std::vector<int> &to, QList<Transient> &transients)
    {
        if (moving.empty())
            return;
        TiedNets tied(model, {from, before.through});
        tied.close(to);
        tied.goThrough(after.through);
        std::map<int, Transient> bySet;
        for (const InterfacePin &pin : model.interfacePins())
            bySet[tied.setOf(pin.net)].pins.append(pin);
        for (const int gang : moving) {
            for (const auto *positions : {&from, &to})
                addGang(gang, (*positions)[static_cast<std::size_t>(gang)], tied, bySet);
        }
        QList<Transient> found;
        for (auto &[set, transient] : bySet) {
            transient.isOnTheWayToRest = isOnTheWayToRest;
            if (holdsPinsApart(transient.pins))
                found.append(transient);
        }
        std::sort(found.begin(), found.end(), [](const Transient &a, const Transient &b) {
            return std::tie(a.pins.first().ref, a.pins.first().number) <
                   std::tie(b.pins.first().ref, b.pins.first().number);
        });
        transients += found;
    }

    void addGang(int gang, int position, TiedNets &tied, std::map<int, Transient> &bySet) const
    {
        for (const NetContact &contact : model.contactsOf(gang, position)) {
            const auto found = bySet.find(tied.setOf(contact.net));
            if (found == bySet.end())
                continue;
            auto &gangs = found->second.gangs;
            if (gangs.empty() || gangs.back() != gang)
                gangs.push_back(gang);
        }
    }

    /// Whether two of the pins are tied together neither before nor after. There are two where neither state ties all
    /// of them: if two that are apart before are tied after, a third that is apart from these after is apart before
    /// from one of them.
    bool holdsPinsApart(const QList<InterfacePin> &pins)
    {
        const auto areTied = [&](TiedNets &tied) {
            return std::all_of(pins.cbegin(), pins.cend(), [&](const InterfacePin &pin) {
                return tied.setOf(pin.net) == tied.setOf(pins.first().net);
            });
        };
        return !areTied(tiedBefore) && !areTied(tiedAfter);
    }

    const SwitchingModel &model;
    const SwitchedState &before;
    const SwitchedState &after;
    TiedNets tiedBefore;
    TiedNets tiedAfter;
};
}

StateChange changeBetween(const SwitchingModel &model, const SwitchedState &before, const SwitchedState &after)
{
    return ChangeFinder(model, before, after).change();
}
}
