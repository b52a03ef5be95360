#include "cli/formats/html/StatePage.h"

#include "cli/formats/Json.h"
#include "cli/formats/html/JsonTable.h"
#include "cli/formats/html/Page.h"
#include "cli/formats/html/RelaysAway.h"

#include <QHash>

#include <utility>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

class StatePageData
{
public:
    explicit StatePageData(const StateReport &stateReport)
        : report(stateReport)
        , state(stateReport.model)
    {
    }

    QByteArray toText()
    {
        QJsonArray interfacePins;
        for (const InterfacePin &pin : report.model.interfacePins())
            interfacePins.append(place(pin));
        QJsonArray steps;
        for (const StateStep &step : report.steps)
            steps.append(stepToData(step));
        return toPageData({{u"boards"_s, QJsonArray::fromStringList(report.fileNames)},
                           {u"interfacePins"_s, interfacePins},
                           {u"steps"_s, steps},
                           {u"unknown"_s, placesOf(report.model.unknownComponents())},
                           {u"components"_s, components.rows},
                           {u"pins"_s, pins.rows}});
    }

private:
    QJsonObject stepToData(const StateStep &step)
    {
        QJsonObject members{{u"name"_s, step.name},
                            {u"connected"_s, placesOf(step.connections.connected)},
                            {u"couplings"_s, couplings(step.connections.couplings)},
                            {u"relays"_s, relays(step)}};
        if (step.expectation)
            addExpectation(*step.expectation, members);
        return members;
    }

    QJsonArray couplings(const QList<PinCoupling> &found)
    {
        QJsonArray result;
        for (const auto &[sets, passives] : found)
            result.append(QJsonObject{{u"sets"_s, placesOf(sets)}, {u"passives"_s, placesOf(passives)}});
        return result;
    }

    QJsonArray relays(const StateStep &step)
    {
        state.setPositions(step.positions);
        QHash<int, int> shownSets; // by set of nets
        for (qsizetype i = 0; i < step.connections.connected.size(); ++i)
            shownSets.insert(state.setOf(step.connections.connected.at(i).first().net), static_cast<int>(i));
        return relaysAwayToData(
            report.model, step.positions, [this](const QString &ref) { return place(ref); },
            [&](int net) { return shownSets.value(state.setOf(net), SwitchingModel::none); });
    }

    void addExpectation(const ExpectationReport &expectation, QJsonObject &members)
    {
        const auto &connections = expectation.connections;
        const auto &compared = expectation.compared;
        QJsonArray missing;
        for (const int connection : compared.missing)
            missing.append(ends(connections.at(connection)));
        QJsonArray through;
        for (const auto &[connection, passives] : compared.through)
            through.append(
                QJsonObject{{u"pins"_s, ends(connections.at(connection))}, {u"passives"_s, placesOf(passives)}});
        QJsonArray shorts;
        for (const auto &[sets, relaysOfShort] : compared.shorts)
            shorts.append(QJsonObject{{u"sets"_s, placesOf(sets)}, {u"relays"_s, placesOf(relaysOfShort)}});
        members.insert(u"expected"_s, connections.size());
        members.insert(u"missing"_s, missing);
        members.insert(u"through"_s, through);
        members.insert(u"shorts"_s, shorts);
    }

    QJsonArray ends(const ExpectedConnection &connection) { return {place(connection.from), place(connection.to)}; }

    QJsonArray placesOf(const QList<QList<InterfacePin>> &sets)
    {
        QJsonArray result;
        for (const auto &set : sets) {
            QJsonArray places;
            for (const InterfacePin &pin : set)
                places.append(place(pin));
            result.append(places);
        }
        return result;
    }

    QJsonArray placesOf(const QStringList &refs)
    {
        QJsonArray result;
        for (const QString &ref : refs)
            result.append(place(ref));
        return result;
    }

    qsizetype place(const QString &ref)
    {
        return components.place(ref, [&] { return componentToJson(*report.netlist.getComponentByRef(ref)); });
    }

    qsizetype place(const InterfacePin &pin)
    {
        return pins.place({pin.ref, pin.number}, [&] {
            return QJsonObject{{u"component"_s, place(pin.ref)},
                               {u"number"_s, pin.number},
                               {u"text"_s, report.pinNames.text(pin.ref, pin.number)}};
        });
    }

    const StateReport &report;
    Connectivity state;
    JsonTable<QString> components;
    JsonTable<std::pair<QString, QString>> pins;
};
}

QByteArray statesToPage(const StateReport &report)
{
    const QStringList scripts{u"text.js"_s,   u"theme.js"_s,    u"components.js"_s, u"boards.js"_s,
                              u"system.js"_s, u"steplist.js"_s, u"state.js"_s};
    return pageOf({u"state.html"_s, {u"page.css"_s, u"system.css"_s}, scripts}, StatePageData(report).toText());
}
}
