#include "cli/formats/PlanJson.h"

#include "cli/formats/Json.h"
#include "cli/formats/ModelNames.h"

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

QString planResultName(PlanResult result)
{
    switch (result) {
    case PlanResult::Optimal:
        return u"optimal"_s;
    case PlanResult::Feasible:
        return u"feasible"_s;
    case PlanResult::Impossible:
        return u"impossible"_s;
    case PlanResult::Unknown:
        break;
    }
    return u"unknown"_s;
}

namespace {

QJsonObject positionsToJson(const SwitchingModel &model, const std::vector<int> &positions)
{
    QJsonObject members;
    for (int component = 0; component < model.componentCount(); ++component) { // by reference, as objects want them
        const int gang = model.gangOf(component);
        const int position = gang == SwitchingModel::none ? 0 : positions[static_cast<std::size_t>(gang)];
        if (position > 0)
            members.insert(model.ref(component), position);
    }
    return members;
}

/// Steps of a table, in the numbers of its model.
class PlanJson
{
public:
    PlanJson(const SwitchingModel &switchingModel, const PlanStep &planStep)
        : model(switchingModel)
        , step(planStep)
        , plan(planStep.planned.plan)
    {
    }

    void insertPlan(QJsonObject &members) const
    {
        members.insert(u"positions"_s, positionsToJson(model, plan.positions));
        members.insert(u"groups"_s, arrayOf(plan.groups, [this](const auto &group) { return groupToJson(group); }));
        members.insert(u"couplings"_s,
                       arrayOf(plan.couplings, [this](const auto &coupling) { return couplingToJson(coupling); }));
        members.insert(u"alsoConnected"_s, setsToJson(plan.alsoConnected));
        members.insert(u"unknown"_s, namesToJson(refsOfComponents(model, plan.unknown)));
    }

    void insertChange(QJsonObject &members) const
    {
        const StateChange &change = step.planned.change;
        members.insert(u"toRest"_s, namesToJson(refsOfGangs(model, change.toRest)));
        members.insert(u"toSet"_s, namesToJson(refsOfGangs(model, change.toSet)));
        members.insert(u"transients"_s, arrayOf(change.transients,
                                                [this](const auto &transient) { return transientToJson(transient); }));
    }

    void insertConflict(QJsonObject &members) const
    {
        members.insert(u"conflict"_s, rowsToJson(plan.conflict));
        members.insert(u"bottleneck"_s, namesToJson(namesOfNets(model, plan.bottleneck)));
    }

private:
    template <typename Values, typename ToJson>
    static QJsonArray arrayOf(const Values &values, const ToJson &toJson)
    {
        QJsonArray result;
        for (const auto &value : values)
            result.append(toJson(value));
        return result;
    }

    static QJsonArray namesToJson(const QStringList &names) { return QJsonArray::fromStringList(names); }

    QJsonArray rowsToJson(const std::vector<int> &connections) const
    {
        return arrayOf(connections, [this](int connection) { return step.rows.at(connection); });
    }

    QJsonObject groupToJson(const PlannedGroup &group) const
    {
        return {{u"connections"_s, rowsToJson(group.connections)},
                {u"pins"_s, pinsToJson(group.pins)},
                {u"through"_s, namesToJson(refsOfPassives(model, group.through))},
                {u"nets"_s, namesToJson(namesOfNets(model, group.nets))},
                {u"sideConnections"_s, pinsToJson(group.sideConnections)}};
    }

    QJsonObject couplingToJson(const PlannedCoupling &coupling) const
    {
        return {{u"groups"_s, arrayOf(coupling.groups, [](int group) { return group; })},
                {u"pins"_s, pinsToJson(coupling.pins)},
                {u"passives"_s, namesToJson(refsOfPassives(model, coupling.passives))}};
    }

    QJsonObject transientToJson(const Transient &transient) const
    {
        const auto gangToJson = [this](int gang) { return namesToJson(model.gang(gang).components); };
        return {{u"half"_s, transient.isOnTheWayToRest ? u"rest"_s : u"set"_s},
                {u"pins"_s, pinsToJson(transient.pins)},
                {u"gangs"_s, arrayOf(transient.gangs, gangToJson)}};
    }

    const SwitchingModel &model;
    const PlanStep &step;
    const ConnectionPlan &plan;
};
}

QJsonObject planStepToJson(const PlanReport &report, const PlanStep &step)
{
    const PlanResult result = step.planned.plan.result;
    QJsonObject members{{u"step"_s, step.name}, {u"result"_s, planResultName(result)}};
    const PlanJson json(report.model, step);
    if (step.hasPlan()) {
        json.insertPlan(members);
        json.insertChange(members);
    } else if (result == PlanResult::Impossible) {
        json.insertConflict(members);
    }
    return members;
}
}
