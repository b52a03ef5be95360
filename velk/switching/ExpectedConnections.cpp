#include <velk/switching/ExpectedConnections.h>

#include <velk/model/DisjointSets.h>

#include <QHash>
#include <QSet>

#include <algorithm>
#include <cstddef>
#include <map>
#include <tuple>
#include <vector>

namespace Velk {

namespace {

using Pins = QList<InterfacePin>;

constexpr int none = SwitchingModel::none;

bool isBefore(const InterfacePin &a, const InterfacePin &b)
{
    return std::tie(a.ref, a.number) < std::tie(b.ref, b.number);
}

bool isSamePin(const InterfacePin &a, const InterfacePin &b)
{
    return std::tie(a.ref, a.number) == std::tie(b.ref, b.number);
}

Pins eachOnce(Pins pins)
{
    std::sort(pins.begin(), pins.end(), isBefore);
    pins.erase(std::unique(pins.begin(), pins.end(), isSamePin), pins.end());
    return pins;
}

/// The groups of connections, each known by the least of its nets.
class ConnectionGroups
{
public:
    ConnectionGroups(const QList<ExpectedConnection> &connections, int netCount)
        : nets(netCount)
        , isAskedFor(static_cast<std::size_t>(netCount), false)
    {
        for (const auto &[from, to] : connections) {
            nets.unite(from.net, to.net);
            isAskedFor[static_cast<std::size_t>(from.net)] = true;
            isAskedFor[static_cast<std::size_t>(to.net)] = true;
        }
    }

    /// That of the pins on the net, or none.
    int groupOf(int net) { return isAskedFor[static_cast<std::size_t>(net)] ? nets.leastOf(net) : none; }

private:
    DisjointSets nets;
    std::vector<bool> isAskedFor;
};

/// Who has interface pins, or pins that were asked for, in a set of connected nets.
class Occupants
{
public:
    Occupants(const Connectivity &state, const QList<ExpectedConnection> &connections, ConnectionGroups &groups)
        : occupants(static_cast<std::size_t>(state.model().netCount()), none)
    {
        for (const auto &[from, to] : connections) {
            add(state.setOf(from.net), groups.groupOf(from.net));
            add(state.setOf(to.net), groups.groupOf(to.net));
        }
        for (const InterfacePin &pin : state.model().interfacePins()) {
            const int group = groups.groupOf(pin.net);
            add(state.setOf(pin.net), group == none ? others : group);
        }
    }

    bool areNoneBut(int group, int set) const
    {
        const int occupant = occupants[static_cast<std::size_t>(set)];
        return occupant == none || occupant == group;
    }

private:
    void add(int set, int group)
    {
        int &occupant = occupants[static_cast<std::size_t>(set)];
        occupant = occupant == none || occupant == group ? group : others;
    }

    static constexpr int others = -2;
    std::vector<int> occupants; ///< by set: one group, others, or none
};

/// Ways from one set of connected nets to another over passive components.
class PassiveWays
{
public:
    explicit PassiveWays(const Connectivity &connectivity)
        : state(connectivity)
        , passivesAt(static_cast<std::size_t>(state.model().netCount()))
        , coupled(state.model().netCount())
    {
        const auto &passives = state.model().passives();
        for (std::size_t i = 0; i < passives.size(); ++i) {
            if (!passives[i].isWay)
                continue;
            for (const int net : passives[i].nets) {
                passivesAt[static_cast<std::size_t>(state.setOf(net))].push_back(static_cast<int>(i));
                coupled.unite(state.setOf(net), state.setOf(passives[i].nets.front()));
            }
        }
    }

    const PassiveComponent &passive(int number) const
    {
        return state.model().passives()[static_cast<std::size_t>(number)];
    }

    bool isThereOne(int from, int to) { return coupled.areUnited(from, to); }

    /// The passives of a shortest way over those that are \a usable, or none.
    template <typename IsUsable>
    std::vector<int> shortest(int from, int to, IsUsable isUsable) const
    {
        QHash<int, Arrival> arrivals{{from, {none, none}}};
        QSet<int> seen; // passives
        std::vector<int> reached{from};
        for (std::size_t i = 0; i < reached.size() && !arrivals.contains(to); ++i) {
            const int set = reached[i];
            for (const int number : passivesAt[static_cast<std::size_t>(set)]) {
                if (seen.contains(number) || !isUsable(passive(number)))
                    continue;
                seen.insert(number);
                for (const int net : passive(number).nets) {
                    const int next = state.setOf(net);
                    if (arrivals.contains(next))
                        continue;
                    arrivals.insert(next, {number, set});
                    reached.push_back(next);
                }
            }
        }
        return wayBack(arrivals, to);
    }

private:
    /// How a set was reached first.
    struct Arrival
    {
        int passive;
        int fromSet;
    };

    static std::vector<int> wayBack(const QHash<int, Arrival> &arrivals, int to)
    {
        std::vector<int> way;
        for (auto arrival = arrivals.constFind(to); arrival != arrivals.cend() && arrival->passive != none;
             arrival = arrivals.constFind(arrival->fromSet))
            way.push_back(arrival->passive);
        return way;
    }

    const Connectivity &state;
    std::vector<std::vector<int>> passivesAt; ///< by set
    DisjointSets coupled;                     ///< sets
};

/// What is tied together, and by whom.
struct Region
{
    std::map<int, Pins> pinsOfGroups;
    std::map<int, Pins> otherPins; ///< of no group, by the set that they belong to at rest
    QStringList relays;            ///< away from rest
};

class Comparison
{
public:
    Comparison(const Connectivity &current, const Connectivity &rest, const QList<ExpectedConnection> &connections)
        : state(current)
        , atRest(rest)
        , expected(connections)
        , groups(connections, current.model().netCount())
        , tied(current.model().netCount())
    {
    }

    ComparedConnections result()
    {
        ComparedConnections compared;
        findWays(compared);
        compared.shorts = shorts();
        return compared;
    }

private:
    void findWays(ComparedConnections &compared)
    {
        const Occupants occupants(state, expected, groups);
        PassiveWays ways(state);
        for (int i = 0; i < expected.size(); ++i) {
            const int from = state.setOf(expected.at(i).from.net);
            const int to = state.setOf(expected.at(i).to.net);
            if (from == to)
                continue;
            if (!ways.isThereOne(from, to)) {
                compared.missing.append(i);
                continue;
            }
            const auto way = wayBetween(from, to, groups.groupOf(expected.at(i).from.net), ways, occupants);
            compared.through.append({i, goThrough(way, ways)});
        }
    }

    std::vector<int> wayBetween(int from, int to, int group, const PassiveWays &ways, const Occupants &occupants) const
    {
        const auto touchesNothingElse = [&](const PassiveComponent &passive) {
            return std::all_of(passive.nets.cbegin(), passive.nets.cend(),
                               [&](int net) { return occupants.areNoneBut(group, state.setOf(net)); });
        };
        const auto way = ways.shortest(from, to, touchesNothingElse);
        return way.empty() ? ways.shortest(from, to, [](const PassiveComponent &) { return true; }) : way;
    }

    /// Ties all together that these passives couple. Returns their references.
    QStringList goThrough(const std::vector<int> &passives, const PassiveWays &ways)
    {
        QStringList refs;
        for (const int number : passives) {
            const PassiveComponent &passive = ways.passive(number);
            refs.append(passive.ref);
            for (const int net : passive.nets)
                tied.unite(state.setOf(net), state.setOf(passive.nets.front()));
        }
        refs.sort();
        return refs;
    }

    QList<ShortCircuit> shorts()
    {
        std::map<int, Region> regions;
        addPins(regions);
        addRelays(regions);
        QList<ShortCircuit> result;
        for (auto &[number, region] : regions) {
            if (region.pinsOfGroups.size() + region.otherPins.size() > 1)
                result.append(shortCircuit(region));
        }
        std::sort(result.begin(), result.end(), [](const ShortCircuit &a, const ShortCircuit &b) {
            return isBefore(a.sets.first().first(), b.sets.first().first());
        });
        return result;
    }

    int regionAt(int net) { return tied.leastOf(state.setOf(net)); }

    void addPins(std::map<int, Region> &regions)
    {
        for (const auto &[from, to] : expected) {
            for (const InterfacePin &pin : {from, to})
                regions[regionAt(pin.net)].pinsOfGroups[groups.groupOf(pin.net)].append(pin);
        }
        for (const InterfacePin &pin : state.model().interfacePins()) {
            if (groups.groupOf(pin.net) == none)
                regions[regionAt(pin.net)].otherPins[atRest.setOf(pin.net)].append(pin);
        }
    }

    void addRelays(std::map<int, Region> &regions)
    {
        for (int gang = 0; gang < state.model().gangCount(); ++gang) {
            if (state.position(gang) == 0)
                continue;
            for (const NetContact &contact : state.model().contactsOf(gang, state.position(gang))) {
                const auto region = regions.find(regionAt(contact.net));
                if (region != regions.end())
                    region->second.relays.append(state.model().ref(contact.component));
            }
        }
    }

    static ShortCircuit shortCircuit(Region &region)
    {
        ShortCircuit result{{}, region.relays};
        for (const auto *pinSets : {&region.pinsOfGroups, &region.otherPins}) {
            for (const auto &[number, pins] : *pinSets)
                result.sets.append(eachOnce(pins));
        }
        std::sort(result.sets.begin(), result.sets.end(),
                  [](const Pins &a, const Pins &b) { return isBefore(a.first(), b.first()); });
        result.relays.removeDuplicates();
        result.relays.sort();
        return result;
    }

    const Connectivity &state;
    const Connectivity &atRest;
    const QList<ExpectedConnection> &expected;
    ConnectionGroups groups;
    DisjointSets tied; ///< sets of nets, by passives that are gone through
};
}

ComparedConnections compareConnections(const Connectivity &state, const Connectivity &atRest,
                                       const QList<ExpectedConnection> &expected)
{
    return Comparison(state, atRest, expected).result();
}
}
