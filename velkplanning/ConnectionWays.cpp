#include <velkplanning/ConnectionWays.h>

#include <QHash>
#include <QSet>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace Velk {

namespace {

/// Finds ways over contacts that are closed in a plan, and over passives that groups go through: those of other groups
/// are out of reach.
class WayFinder
{
public:
    WayFinder(const SwitchingModel &switchingModel, const ConnectionPlan &planned)
        : model(switchingModel)
        , plan(planned)
        , contactsAt(static_cast<std::size_t>(switchingModel.netCount()))
    {
        for (int gang = 0; gang < model.gangCount(); ++gang) {
            for (const NetContact &contact : model.contactsOf(gang, positionOf(gang))) {
                contactsAt[static_cast<std::size_t>(contact.net)].push_back({contact.component, contact.otherNet});
                contactsAt[static_cast<std::size_t>(contact.otherNet)].push_back({contact.component, contact.net});
            }
        }
        for (const PlannedGroup &group : plan.groups) {
            for (const int number : group.through) {
                for (const int net : passive(number).nets)
                    passivesAt[net].push_back(number);
            }
        }
    }

    ConnectionWay shortest(int from, int to) const
    {
        QHash<int, Crossing> arrivals{{from, {SwitchingModel::none, from}}}; // by net, each from the net before
        std::vector<int> reached{from};
        QSet<int> passed; // passives
        const auto reach = [&](int net, const Crossing &arrival) {
            if (arrivals.contains(net))
                return;
            arrivals.insert(net, arrival);
            reached.push_back(net);
        };
        for (std::size_t i = 0; i < reached.size() && !arrivals.contains(to); ++i) {
            const int net = reached[i];
            for (const Crossing &contact : contactsAt[static_cast<std::size_t>(net)])
                reach(contact.net, {contact.component, net});
            for (const int number : passivesAt.value(net)) {
                if (passed.contains(number))
                    continue;
                passed.insert(number);
                for (const int next : passive(number).nets)
                    reach(next, {model.componentOf(passive(number).ref), net});
            }
        }
        return {stepsTo(to, arrivals), to};
    }

private:
    /// A component and the net on one side of it.
    struct Crossing
    {
        int component;
        int net;
    };

    int positionOf(int gang) const { return plan.positions[static_cast<std::size_t>(gang)]; }
    const PassiveComponent &passive(int number) const { return model.passives()[static_cast<std::size_t>(number)]; }

    std::vector<WayStep> stepsTo(int net, const QHash<int, Crossing> &arrivals) const
    {
        std::vector<WayStep> steps;
        for (auto arrival = arrivals.constFind(net);
             arrival != arrivals.cend() && arrival->component != SwitchingModel::none;
             arrival = arrivals.constFind(net)) {
            const auto [pinIn, pinOut] = pinsBetween(arrival->component, arrival->net, net);
            steps.push_back({arrival->net, arrival->component, pinIn, pinOut});
            net = arrival->net;
        }
        std::reverse(steps.begin(), steps.end());
        return steps;
    }

    std::pair<QString, QString> pinsBetween(int component, int net, int otherNet) const
    {
        if (model.role(component) == SwitchingRole::Passive)
            return {firstPinOn(net, component), firstPinOn(otherNet, component)};
        const QString &ref = model.ref(component);
        const auto &closed = model.positions(component).positions.at(positionOf(model.gangOf(component))).closed;
        for (const Contact &contact : closed) {
            const int first = model.netOf(ref, contact.pin);
            const int second = model.netOf(ref, contact.otherPin);
            if (first == net && second == otherNet)
                return {contact.pin, contact.otherPin};
            if (first == otherNet && second == net)
                return {contact.otherPin, contact.pin};
        }
        return {};
    }

    QString firstPinOn(int net, int component) const
    {
        const QList<InterfacePin> pins = model.pinsOf(component);
        const auto pin =
            std::find_if(pins.cbegin(), pins.cend(), [net](const InterfacePin &each) { return each.net == net; });
        return pin == pins.cend() ? QString() : pin->number;
    }

    const SwitchingModel &model;
    const ConnectionPlan &plan;
    std::vector<std::vector<Crossing>> contactsAt; ///< by net, each to the net after
    QHash<int, std::vector<int>> passivesAt;       ///< by net
};
}

QList<ConnectionWay> waysOf(const SwitchingModel &model, const ConnectionRequest &request, const ConnectionPlan &plan)
{
    if (plan.groups.isEmpty())
        return {};
    const WayFinder finder(model, plan);
    QList<ConnectionWay> ways;
    for (const auto &[from, to] : request.connections)
        ways.append(finder.shortest(from.net, to.net));
    return ways;
}
}
