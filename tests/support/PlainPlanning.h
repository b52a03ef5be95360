#ifndef VELK_TESTS_PLAINPLANNING_H
#define VELK_TESTS_PLAINPLANNING_H

#include <velkplanning/ConnectionPlan.h>
#include <velkplanning/ConnectionRequest.h>

#include <velk/model/EDAProvider.h>
#include <velk/switching/SwitchingModel.h>

#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <limits>
#include <numeric>
#include <optional>
#include <utility>
#include <vector>

/// What plans have to hold, rule by rule, and which is the best, by trying all states with all choices of passives.
class PlainPlanning
{
public:
    using Positions = std::vector<int>;
    /// Gangs that leave their position, if that counts; gangs away from rest; passives gone through.
    using Cost = std::array<int, 3>;

    PlainPlanning(const Velk::SwitchingModel &switchingModel, const Velk::EDAProvider &provider,
                  const Velk::ConnectionRequest &wanted, const Positions &positionsBefore = {})
        : model(switchingModel)
        , netlist(provider)
        , request(wanted)
        , rest(static_cast<std::size_t>(model.gangCount()), 0)
        , before(positionsBefore.empty() ? rest : positionsBefore)
    {
        findGroups();
        findUnknown();
        for (const Velk::InterfacePin &pin : model.interfacePins()) {
            if (!request.allowsSideConnections && !contains(request.allowedComponents, model.componentOf(pin.ref)))
                guarded.push_back(pin.net);
        }
    }

    /// Empty if the plan is what trying all states finds, else what is wrong with it.
    QString differenceOf(const Velk::ConnectionPlan &plan) const
    {
        const auto best = bestCost();
        if (!best) {
            if (plan.result != Velk::PlanResult::Impossible || !isIrreducible(plan.conflict))
                return QStringLiteral("there is none, or its conflict is another one");
            const bool isRight = plan.bottleneck.empty() || with(plan.conflict).isBottleneck(plan.bottleneck);
            return isRight ? QString() : QStringLiteral("the bottleneck is none");
        }
        if (plan.result != Velk::PlanResult::Optimal)
            return QStringLiteral("there is one");
        if (const QString fault = faultOf(plan); !fault.isEmpty())
            return QStringLiteral("breaks rule ") + fault;
        for (std::size_t group = 0; group < groups.size(); ++group) {
            if (plan.groups.at(static_cast<qsizetype>(group)).nets != extentOf(group, plan.positions, throughOf(plan)))
                return QStringLiteral("the extent of group %1 is another one").arg(group);
        }
        return costOf(plan) == *best ? QString() : QStringLiteral("there is a better one");
    }

    /// The number of the first rule that the plan breaks, "couplings" for the setting on these; or empty.
    QString faultOf(const Velk::ConnectionPlan &plan) const
    {
        if (throughOf(plan).size() != groups.size())
            return QStringLiteral("1");
        const QString fault = faultOf(plan.positions, throughOf(plan));
        const bool isMore = fault.isEmpty() && hasMoreThanItNeeds(plan.positions, throughOf(plan));
        return isMore ? QStringLiteral("7") : fault;
    }

    /// The worst is that of no plan.
    Cost costOf(const Velk::ConnectionPlan &plan) const
    {
        constexpr int most = std::numeric_limits<int>::max();
        const bool isPlan = plan.result == Velk::PlanResult::Optimal || plan.result == Velk::PlanResult::Feasible;
        return isPlan ? costOf(plan.positions, throughOf(plan)) : Cost{most, most, most};
    }

private:
    using Through = std::vector<std::vector<int>>; ///< passives of each group, in the order of first connections
    static constexpr int none = -1;
    /// A number for each net, the same for those that are tied together.
    using Pieces = std::vector<int>;

    static std::size_t at(int number) { return static_cast<std::size_t>(number); }

    static bool contains(const std::vector<int> &numbers, int number)
    {
        return std::find(numbers.begin(), numbers.end(), number) != numbers.end();
    }

    static void tie(Pieces &pieces, const std::vector<int> &nets)
    {
        for (const int net : nets) {
            const auto [from, to] = std::pair(pieces[at(net)], pieces[at(nets.front())]);
            std::replace(pieces.begin(), pieces.end(), from, to);
        }
    }

    Pieces pieces() const
    {
        Pieces numbers(at(model.netCount()));
        std::iota(numbers.begin(), numbers.end(), 0);
        return numbers;
    }

    Pieces tiedBy(const Positions &positions) const
    {
        Pieces tied = pieces();
        for (int gang = 0; gang < model.gangCount(); ++gang) {
            for (const Velk::NetContact &contact : model.contactsOf(gang, positions[at(gang)]))
                tie(tied, {contact.net, contact.otherNet});
        }
        return tied;
    }

    const std::vector<int> &passiveNets(int passive) const { return model.passives()[at(passive)].nets; }

    /// The same request with these connections alone.
    PlainPlanning with(const std::vector<int> &connections) const
    {
        Velk::ConnectionRequest some = request;
        some.connections.clear();
        for (const int connection : connections)
            some.connections.append(request.connections.at(connection));
        return PlainPlanning(model, netlist, some);
    }

    bool isIrreducible(const std::vector<int> &conflict) const
    {
        if (conflict.empty() || with(conflict).bestCost())
            return false;
        return std::all_of(conflict.begin(), conflict.end(), [&](int connection) {
            auto others = conflict;
            others.erase(std::find(others.begin(), others.end(), connection));
            return with(others).bestCost().has_value();
        });
    }

    static Through throughOf(const Velk::ConnectionPlan &plan)
    {
        Through through;
        for (const Velk::PlannedGroup &group : plan.groups)
            through.push_back(group.through);
        return through;
    }

    std::optional<Cost> bestCost() const
    {
        std::optional<Cost> best;
        Positions positions = rest;
        const Through withoutPassives(groups.size());
        do {
            if (best && costOf(positions, withoutPassives) >= *best)
                continue;
            const QString fault = faultOf(positions, withoutPassives);
            if (fault.isEmpty() || isMendedByPassives(fault))
                tryPassives(positions, withoutPassives, 0, best);
        } while (advance(positions));
        return best;
    }

    Cost costOf(const Positions &positions, const Through &through) const
    {
        Cost cost{0, 0, 0};
        for (std::size_t gang = 0; gang < positions.size(); ++gang) {
            cost[0] += request.aim == Velk::PlanAim::FewestChanges && positions[gang] != before[gang] ? 1 : 0;
            cost[1] += positions[gang] != 0 ? 1 : 0;
        }
        for (const auto &passives : through)
            cost[2] += static_cast<int>(passives.size());
        return cost;
    }

    /// Rule 7 left out; what more passives cannot mend comes first.
    QString faultOf(const Positions &positions, const Through &through) const
    {
        const Pieces tied = tiedBy(positions);
        std::vector<int> groupOf(tied.size(), none); // whose extent a net belongs to
        bool isWhole = true;
        for (std::size_t group = 0; group < groups.size(); ++group) {
            Pieces own = tied;
            for (const int passive : through[group])
                tie(own, passiveNets(passive));
            for (std::size_t net = 0; net < own.size(); ++net) {
                if (!std::any_of(groups[group].begin(), groups[group].end(),
                                 [&](int pinNet) { return own[at(pinNet)] == own[net]; }))
                    continue;
                if (groupOf[net] != none)
                    return QStringLiteral("2");
                groupOf[net] = static_cast<int>(group);
                if (contains(groups[group], static_cast<int>(net)))
                    isWhole = isWhole && own[net] == own[at(groups[group].front())];
                else if (contains(guarded, static_cast<int>(net)))
                    return QStringLiteral("3");
                else if (contains(request.excludedNets, static_cast<int>(net)))
                    return QStringLiteral("4");
            }
        }
        if (usesExcluded(positions, through))
            return QStringLiteral("4");
        if (!isWhole)
            return QStringLiteral("1");
        if (!request.trustsUnknown && isTouchedByUnknown(tied, groupOf))
            return QStringLiteral("5");
        if (!request.allowsSideConnections && tiesOthers(tied, groupOf))
            return QStringLiteral("6");
        return request.forbidsCouplings && couplesGroups(tied, groupOf) ? QStringLiteral("couplings") : QString();
    }

    /// The nets of a group's extent, ascending.
    std::vector<int> extentOf(std::size_t group, const Positions &positions, const Through &through) const
    {
        Pieces own = tiedBy(positions);
        for (const int passive : through[group])
            tie(own, passiveNets(passive));
        std::vector<int> extent;
        for (int net = 0; net < model.netCount(); ++net) {
            if (own[at(net)] == own[at(groups[group].front())])
                extent.push_back(net);
        }
        return extent;
    }

    /// Whether more of the groups cannot do without one of these nets than there are of them.
    bool isBottleneck(const std::vector<int> &nets) const
    {
        const auto needing = std::count_if(groups.begin(), groups.end(),
                                           [&](const std::vector<int> &group) { return needsOneOf(nets, group); });
        return needing > static_cast<std::ptrdiff_t>(nets.size());
    }

    void findGroups()
    {
        Pieces sharing = pieces();
        for (const auto &[from, to] : request.connections)
            tie(sharing, {from.net, to.net});
        std::vector<int> order;
        for (const auto &[from, to] : request.connections) {
            const int piece = sharing[at(from.net)];
            if (!contains(order, piece)) {
                order.push_back(piece);
                groups.emplace_back();
            }
            auto &group =
                groups[static_cast<std::size_t>(std::find(order.begin(), order.end(), piece) - order.begin())];
            group.insert(group.end(), {from.net, to.net});
        }
    }

    /// Pins that only nets name count too.
    void findUnknown()
    {
        static const QRegularExpression coil(QStringLiteral("^[AB][1-9]$"));
        for (const QString &ref : model.unknownComponents()) {
            QStringList numbers;
            const auto part = netlist.getPartByName(netlist.getComponentByRef(ref)->part);
            for (const auto &pin : std::as_const(part->pins))
                numbers.append(pin->number);
            for (const auto &net : netlist.getNets()) {
                for (const auto &node : std::as_const(net->nodes)) {
                    if (node->ref == ref)
                        numbers.append(node->pin);
                }
            }
            unknown.emplace_back();
            for (const QString &number : std::as_const(numbers)) {
                if (!coil.match(number).hasMatch())
                    unknown.back().push_back(model.netOf(ref, number));
            }
        }
    }

    bool isExcluded(int component) const { return contains(request.excludedComponents, component); }

    bool mayGoThrough(int passive) const
    {
        const Velk::PassiveComponent &gone = model.passives()[at(passive)];
        return gone.isWay && !isExcluded(model.componentOf(gone.ref));
    }

    bool staysAtRest(int gang) const
    {
        const QStringList &refs = model.gang(gang).components;
        return std::any_of(refs.begin(), refs.end(),
                           [&](const QString &ref) { return isExcluded(model.componentOf(ref)); });
    }

    bool usesExcluded(const Positions &positions, const Through &through) const
    {
        for (int gang = 0; gang < model.gangCount(); ++gang) {
            if (positions[at(gang)] != 0 && staysAtRest(gang))
                return true;
        }
        return std::any_of(through.begin(), through.end(), [&](const std::vector<int> &passives) {
            return !std::all_of(passives.begin(), passives.end(), [&](int passive) { return mayGoThrough(passive); });
        });
    }

    bool isTouchedByUnknown(const Pieces &tied, const std::vector<int> &groupOf) const
    {
        std::vector<int> protectedPieces;
        for (const int net : guarded) {
            if (groupOf[at(net)] == none)
                protectedPieces.push_back(tied[at(net)]);
        }
        return std::any_of(unknown.begin(), unknown.end(), [&](const std::vector<int> &nets) {
            std::vector<int> touched;
            bool touchesPin = false;
            for (const int net : nets) {
                if (groupOf[at(net)] != none && !contains(touched, groupOf[at(net)]))
                    touched.push_back(groupOf[at(net)]);
                touchesPin = touchesPin || contains(protectedPieces, tied[at(net)]);
            }
            return touched.size() > 1 || (touched.size() == 1 && touchesPin);
        });
    }

    bool tiesOthers(const Pieces &tied, const std::vector<int> &groupOf) const
    {
        const Pieces atRest = tiedBy(rest);
        for (const Velk::InterfacePin &pin : model.interfacePins()) {
            for (const Velk::InterfacePin &other : model.interfacePins()) {
                const bool isOutside = groupOf[at(pin.net)] == none && groupOf[at(other.net)] == none;
                if (isOutside && tied[at(pin.net)] == tied[at(other.net)] &&
                    atRest[at(pin.net)] != atRest[at(other.net)])
                    return true;
            }
        }
        return false;
    }

    bool couplesGroups(Pieces tied, const std::vector<int> &groupOf) const
    {
        for (const Velk::PassiveComponent &passive : model.passives())
            tie(tied, passive.nets);
        for (std::size_t net = 0; net < tied.size(); ++net) {
            for (std::size_t other = 0; other < net; ++other) {
                if (tied[net] == tied[other] && groupOf[net] != none && groupOf[other] != none &&
                    groupOf[net] != groupOf[other])
                    return true;
            }
        }
        return false;
    }

    bool hasMoreThanItNeeds(Positions positions, Through through) const
    {
        for (std::size_t gang = 0; gang < positions.size(); ++gang) {
            const int position = std::exchange(positions[gang], 0);
            const bool keeps = request.aim == Velk::PlanAim::FewestChanges && position == before[gang];
            if (position != 0 && !keeps && faultOf(positions, through).isEmpty())
                return true;
            positions[gang] = position;
        }
        for (auto &passives : through) {
            const auto all = passives;
            for (const int passive : all) {
                passives.erase(std::find(passives.begin(), passives.end(), passive));
                if (faultOf(positions, through).isEmpty())
                    return true;
                passives = all;
            }
        }
        return false;
    }

    static bool isMendedByPassives(const QString &fault)
    {
        return fault == QLatin1String("1") || fault == QLatin1String("6");
    }

    /// Leaves each passive from this one on out, and puts it into each group.
    void tryPassives(const Positions &positions, const Through &through, int passive, std::optional<Cost> &best) const
    {
        const Cost cost = costOf(positions, through);
        if (best && cost >= *best)
            return;
        if (at(passive) == model.passives().size()) {
            if (faultOf(positions, through).isEmpty())
                best = cost;
            return;
        }
        tryPassives(positions, through, passive + 1, best);
        for (std::size_t group = 0; mayGoThrough(passive) && group < groups.size(); ++group) {
            Through more = through;
            more[group].push_back(passive);
            tryPassives(positions, more, passive + 1, best);
        }
    }

    /// The next positions, or all at rest again and false.
    bool advance(Positions &positions) const
    {
        for (int gang = 0; gang < model.gangCount(); ++gang) {
            if (staysAtRest(gang))
                continue;
            if (++positions[at(gang)] < model.gang(gang).positionCount)
                return true;
            positions[at(gang)] = 0;
        }
        return false;
    }

    /// Whether one of its pins lies there, or nothing leads round.
    bool needsOneOf(const std::vector<int> &nets, const std::vector<int> &group) const
    {
        std::vector<bool> mayLie(at(model.netCount()), true);
        for (const auto &forbidden : {guarded, request.excludedNets}) {
            for (const int net : forbidden)
                mayLie[at(net)] = false;
        }
        for (const auto &other : groups) {
            for (const int net : other)
                mayLie[at(net)] = &other == &group;
        }
        for (const int net : group)
            mayLie[at(net)] = true;
        for (const int net : nets)
            mayLie[at(net)] = false;
        Pieces tied = pieces();
        const auto tieAllowed = [&](std::vector<int> some) {
            some.erase(std::remove_if(some.begin(), some.end(), [&](int net) { return !mayLie[at(net)]; }), some.end());
            tie(tied, some);
        };
        for (int gang = 0; gang < model.gangCount(); ++gang) {
            for (int position = 0; position < (staysAtRest(gang) ? 1 : model.gang(gang).positionCount); ++position) {
                for (const Velk::NetContact &contact : model.contactsOf(gang, position))
                    tieAllowed({contact.net, contact.otherNet});
            }
        }
        for (std::size_t passive = 0; passive < model.passives().size(); ++passive) {
            if (mayGoThrough(static_cast<int>(passive)))
                tieAllowed(passiveNets(static_cast<int>(passive)));
        }
        return std::any_of(group.begin(), group.end(),
                           [&](int net) { return !mayLie[at(net)] || tied[at(net)] != tied[at(group.front())]; });
    }

    const Velk::SwitchingModel &model;
    const Velk::EDAProvider &netlist;
    const Velk::ConnectionRequest request;
    const Positions rest;
    const Positions before;
    std::vector<std::vector<int>> groups;  ///< the nets of their pins
    std::vector<std::vector<int>> unknown; ///< the nets of each component that is unknown, but for its coils
    std::vector<int> guarded;              ///< nets with pins of interfaces that are not allowed
};

#endif
