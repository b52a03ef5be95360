#include "cli/formats/html/PlanPage.h"

#include "cli/formats/ModelNames.h"
#include "cli/formats/PlanJson.h"
#include "cli/formats/PlanText.h"
#include "cli/formats/html/Page.h"
#include "cli/formats/html/RelaysAway.h"
#include "cli/formats/html/RouteTables.h"

#include <velkplanning/ConnectionGroups.h>

#include <QHash>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

class PlanPageData
{
public:
    explicit PlanPageData(const PlanReport &planReport)
        : report(planReport)
        , model(planReport.model)
        , tables(planReport.netlist.connectorTypes(), planReport.netlist, planReport.pinNames, model)
    {
        const auto nets = report.netlist.getNets();
        for (const auto &net : nets)
            netsOf[model->netOf(*net)].append(net);
    }

    QByteArray toText()
    {
        QJsonArray steps;
        for (const PlanStep &step : report.steps)
            steps.append(stepToData(step));
        QJsonObject members{
            {u"boards"_s, QJsonArray::fromStringList(report.fileNames)},
            {u"steps"_s, steps},
        };
        tables.addTo(members);
        return toPageData(members);
    }

private:
    QJsonObject stepToData(const PlanStep &step)
    {
        QJsonObject members{{u"name"_s, step.name},
                            {u"result"_s, planResultName(step.planned.plan.result)},
                            {u"wanted"_s, wanted(step)}};
        if (step.hasPlan())
            addPlan(step, members);
        if (step.planned.plan.result == PlanResult::Impossible)
            addConflict(step, members);
        return members;
    }

    QJsonArray wanted(const PlanStep &step)
    {
        QJsonArray result;
        for (qsizetype i = 0; i < step.connections.size(); ++i) {
            const auto &[from, to] = step.connections.at(i);
            result.append(QJsonObject{{u"from"_s, place(from)}, {u"to"_s, place(to)}, {u"place"_s, step.places.at(i)}});
        }
        return result;
    }

    void addPlan(const PlanStep &step, QJsonObject &members)
    {
        const auto &[plan, ways, change] = step.planned;
        QJsonArray groups;
        for (const PlannedGroup &group : plan.groups)
            groups.append(groupToData(group, plan, ways));
        QJsonArray couplings;
        for (const PlannedCoupling &coupling : plan.couplings)
            couplings.append(couplingToData(coupling));
        QJsonArray alsoConnected;
        for (const auto &pins : plan.alsoConnected)
            alsoConnected.append(placesOf(pins));
        QJsonArray transients;
        for (const Transient &transient : change.transients)
            transients.append(transientToData(transient));
        const qint64 gangsAway =
            std::count_if(plan.positions.begin(), plan.positions.end(), [](int position) { return position > 0; });
        members.insert(u"cost"_s, planResultText(report, step));
        members.insert(u"gangsAway"_s, gangsAway);
        members.insert(u"relays"_s, relays(plan));
        members.insert(u"groups"_s, groups);
        members.insert(u"couplings"_s, couplings);
        members.insert(u"alsoConnected"_s, alsoConnected);
        members.insert(u"unknown"_s, placesOf(refsOfComponents(*model, plan.unknown)));
        members.insert(u"toRest"_s, placesOf(refsOfGangs(*model, change.toRest)));
        members.insert(u"toSet"_s, placesOf(refsOfGangs(*model, change.toSet)));
        members.insert(u"transients"_s, transients);
    }

    QJsonObject groupToData(const PlannedGroup &group, const ConnectionPlan &plan, const QList<ConnectionWay> &ways)
    {
        QJsonArray waysOfGroup;
        for (const int connection : group.connections)
            waysOfGroup.append(QJsonObject{{u"connection"_s, connection},
                                           {u"crossings"_s, crossings(ways.at(connection), plan.positions)}});
        return {{u"pins"_s, placesOf(group.pins)},
                {u"ways"_s, waysOfGroup},
                {u"through"_s, placesOf(refsOfPassives(*model, group.through))},
                {u"nets"_s, placesOfNets(group.nets)},
                {u"sideConnections"_s, placesOf(group.sideConnections)}};
    }

    QJsonObject couplingToData(const PlannedCoupling &coupling)
    {
        QJsonArray groups;
        for (const int group : coupling.groups)
            groups.append(group);
        return {{u"groups"_s, groups},
                {u"pins"_s, placesOf(coupling.pins)},
                {u"passives"_s, placesOf(refsOfPassives(*model, coupling.passives))}};
    }

    QJsonObject transientToData(const Transient &transient)
    {
        QJsonArray gangs;
        for (const int gang : transient.gangs)
            gangs.append(placesOf(model->gang(gang).components));
        return {{u"isOnTheWayToRest"_s, transient.isOnTheWayToRest},
                {u"pins"_s, placesOf(transient.pins)},
                {u"gangs"_s, gangs}};
    }

    QJsonArray crossings(const ConnectionWay &way, const std::vector<int> &positions)
    {
        QJsonArray result;
        for (std::size_t i = 0; i < way.steps.size(); ++i) {
            const auto &[net, component, pinIn, pinOut] = way.steps[i];
            const int next = i + 1 < way.steps.size() ? way.steps[i + 1].net : way.lastNet;
            const int gang = model->gangOf(component);
            const int position =
                gang == SwitchingModel::none ? TracedStep::asDrawn : positions[static_cast<std::size_t>(gang)];
            const TracedStep step{netFor(net), pinIn, report.netlist.getComponentByRef(model->ref(component)), pinOut,
                                  position};
            result.append(tables.place(step, *netFor(next)));
        }
        return result;
    }

    QJsonArray relays(const ConnectionPlan &plan)
    {
        QHash<int, int> groupOf; // by net
        for (qsizetype i = 0; i < plan.groups.size(); ++i) {
            for (const int net : plan.groups.at(i).nets)
                groupOf.insert(net, static_cast<int>(i));
        }
        return relaysAwayToData(
            *model, plan.positions, [this](const QString &ref) { return tables.place(ref); },
            [&](int net) { return groupOf.value(net, SwitchingModel::none); });
    }

    /// The connections in conflict by their groups, and all names of each net of the bottleneck.
    void addConflict(const PlanStep &step, QJsonObject &members)
    {
        const std::vector<int> &conflict = step.planned.plan.conflict;
        QList<ExpectedConnection> connections;
        for (const int connection : conflict)
            connections.append(step.connections.at(connection));
        QJsonArray groups;
        for (const ConnectionGroup &group : groupsOf(connections, model->netCount())) {
            QJsonArray ofGroup;
            for (const int connection : group.connections)
                ofGroup.append(conflict[static_cast<std::size_t>(connection)]);
            groups.append(ofGroup);
        }
        QJsonArray bottleneck;
        for (const int net : step.planned.plan.bottleneck)
            bottleneck.append(placesOfNets({net}));
        members.insert(u"conflict"_s, groups);
        members.insert(u"bottleneck"_s, bottleneck);
    }

    qsizetype place(const InterfacePin &pin)
    {
        return tables.place({EDANetNode::create(pin.ref, pin.number), netFor(pin.net)});
    }

    QJsonArray placesOf(const QList<InterfacePin> &pins)
    {
        QJsonArray result;
        for (const InterfacePin &pin : pins)
            result.append(place(pin));
        return result;
    }

    QJsonArray placesOf(const QStringList &refs)
    {
        QJsonArray result;
        for (const QString &ref : refs)
            result.append(tables.place(ref));
        return result;
    }

    /// With all nets of the netlist that are one net in the model.
    QJsonArray placesOfNets(const std::vector<int> &numbers)
    {
        QJsonArray result;
        for (const int number : numbers) {
            for (const auto &net : netsOf.value(number))
                result.append(tables.place(*net));
        }
        return result;
    }

    QSharedPointer<EDANet> netFor(int number) const
    {
        const auto nets = netsOf.value(number);
        return nets.isEmpty() ? unnamed : nets.first();
    }

    const PlanReport &report;
    const std::optional<SwitchingModel> model;
    RouteTables tables;
    QHash<int, QList<QSharedPointer<EDANet>>> netsOf;          // by number in the model
    const QSharedPointer<EDANet> unnamed = EDANet::create({}); // for pins of relays that lie on no net
};
}

QByteArray plansToPage(const PlanReport &report)
{
    const QStringList scripts{u"text.js"_s,    u"theme.js"_s, u"components.js"_s, u"boards.js"_s,   u"routes.js"_s,
                              u"diagram.js"_s, u"steps.js"_s, u"system.js"_s,     u"steplist.js"_s, u"plan.js"_s};
    return pageOf({u"plan.html"_s, {u"page.css"_s, u"system.css"_s, u"plan.css"_s}, scripts},
                  PlanPageData(report).toText());
}
}
