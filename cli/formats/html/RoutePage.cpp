#include "cli/formats/html/RoutePage.h"

#include "cli/formats/Json.h"
#include "cli/formats/NoRouteText.h"
#include "cli/formats/RouteRelays.h"
#include "cli/formats/html/JsonTable.h"
#include "cli/formats/html/Page.h"

#include <QMap>

#include <algorithm>
#include <tuple>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

class PageData
{
public:
    explicit PageData(const RouteReport &routes)
        : report(routes)
        , connectorTypes(routes.routing.componentTypesThatAreConnectors())
    {
    }

    QByteArray toText()
    {
        QJsonObject members{
            {u"boards"_s, QJsonArray::fromStringList(report.fileNames)},
            {u"limits"_s, QJsonObject{{u"switches"_s, report.routing.maxSwitchingComponentsPerPath()},
                                      {u"connections"_s, report.routing.maxAdditionalNodesPerPath()}}},
            {u"source"_s, end(*report.source)},
            {u"destination"_s, end(*report.destination)},
        };
        const QByteArray routes = routesToText(); // they fill the tables
        if (report.areThereMore)
            members.insert(u"more"_s, true);
        if (!report.switching)
            members.insert(u"asDrawn"_s, true);
        if (const QString leftOut = leftOutText(report); !leftOut.isEmpty())
            members.insert(u"leftOut"_s, leftOut);
        if (report.reason)
            members.insert(u"reason"_s, QJsonArray::fromStringList(reasonTexts(report)));
        members.insert(u"components"_s, components.rows);
        members.insert(u"nets"_s, nets.rows);
        members.insert(u"crossings"_s, crossings.rows);
        members.insert(u"connections"_s, connections.rows);
        return toPageData(members).chopped(1) + ",\"routes\":[" + routes + "]}";
    }

private:
    // There may be very many routes, and all that they hold is numbers.
    QByteArray routesToText()
    {
        QByteArray text;
        for (const TracedPath &path : report.tracedPaths) {
            QByteArrayList crossed;
            for (qsizetype i = 0; i < path.steps.size(); ++i)
                crossed.append(QByteArray::number(place(path.steps.at(i), *path.netAfter(i))));
            QByteArrayList connected;
            for (const TracedNode &connection : path.additionalNodes)
                connected.append(QByteArray::number(place(*connection.node, *connection.net)));
            text += text.isEmpty() ? "{" : ",{";
            text += "\"crossings\":[" + crossed.join(',') + "],\"connections\":[" + connected.join(',') + "]}";
        }
        return text;
    }

    qsizetype place(const QString &ref)
    {
        return components.place(ref, [&] { return componentToJson(*report.netlist.getComponentByRef(ref)); });
    }

    qsizetype place(const EDANet &net)
    {
        return nets.place(&net, [&] { return QJsonObject{{u"name"_s, net.name}, {u"joints"_s, joints(net)}}; });
    }

    qsizetype place(const TracedStep &step, const EDANet &next)
    {
        return crossings.place(
            {step.net.data(), &next, step.component->ref, step.entryPin, step.exitPin, step.position},
            [&] { return crossing(step, next); });
    }

    QJsonObject crossing(const TracedStep &step, const EDANet &next)
    {
        const QString &ref = step.component->ref;
        QJsonObject members{{u"component"_s, place(ref)},
                            {u"from"_s, place(*step.net)},
                            {u"to"_s, place(next)},
                            {u"entry"_s, pin(ref, step.entryPin)},
                            {u"exit"_s, pin(ref, step.exitPin)},
                            {u"position"_s, positionToJson(step)}};
        if (const QString position = positionText(report, step); !position.isEmpty())
            members.insert(u"positionText"_s, position);
        if (taskOf(report, step) == RelayTask::Unknown)
            members.insert(u"isUnknown"_s, true);
        return members;
    }

    qsizetype place(const EDANetNode &node, const EDANet &net)
    {
        return connections.place({&net, node.ref, node.pin}, [&] { return pinOnNet(node, net); });
    }

    QJsonObject end(const EDANetNode &node)
    {
        const auto allNets = report.netlist.getNets();
        const auto net = std::find_if(allNets.cbegin(), allNets.cend(),
                                      [&](const auto &candidate) { return candidate->findNode(node.ref, node.pin); });
        return net == allNets.cend() ? pinOfComponent(node) : pinOnNet(node, **net);
    }

    QJsonObject pinOnNet(const EDANetNode &node, const EDANet &net)
    {
        QJsonObject members = pinOfComponent(node);
        members.insert(u"net"_s, place(net));
        return members;
    }

    QJsonObject pinOfComponent(const EDANetNode &node)
    {
        return {{u"component"_s, place(node.ref)},
                {u"pin"_s, pin(node.ref, node.pin)},
                {u"text"_s, report.pinNames.text(node.ref, node.pin)}};
    }

    QJsonObject pin(const QString &ref, const QString &number) const
    {
        const auto part = report.netlist.getPartByName(report.netlist.getComponentByRef(ref)->part);
        const auto known = part ? part->getPinByNumber(number) : nullptr;
        return pinToJson(known ? *known : *EDAPin::create(number, {}, {}));
    }

    // Where boards meet on the net: the pins that are plugged together.
    QJsonArray joints(const EDANet &net)
    {
        QMap<std::pair<QString, QString>, QStringList> plugs; // by identifier and pin number
        for (const auto &node : std::as_const(net.nodes)) {
            const auto component = report.netlist.getComponentByRef(node->ref);
            if (component && connectorTypes.contains(component->type(), Qt::CaseInsensitive))
                plugs[{component->identifier(), node->pin}].append(node->ref);
        }
        QJsonArray result;
        for (auto plug = plugs.cbegin(); plug != plugs.cend(); ++plug) {
            if (plug->size() < 2)
                continue;
            QJsonArray places;
            for (const QString &ref : *plug)
                places.append(place(ref));
            result.append(QJsonObject{{u"components"_s, places}, {u"pin"_s, pin(plug->first(), plug.key().second)}});
        }
        return result;
    }

    const RouteReport &report;
    const QList<QString> connectorTypes;
    JsonTable<QString> components;
    JsonTable<const EDANet *> nets;
    JsonTable<std::tuple<const EDANet *, const EDANet *, QString, QString, QString, int>> crossings;
    JsonTable<std::tuple<const EDANet *, QString, QString>> connections;
};
}

QByteArray routesToPage(const RouteReport &report)
{
    const QStringList scripts{u"text.js"_s, u"theme.js"_s,   u"boards.js"_s, u"routes.js"_s,
                              u"list.js"_s, u"diagram.js"_s, u"steps.js"_s,  u"page.js"_s};
    return pageOf({u"page.html"_s, {u"page.css"_s}, scripts}, PageData(report).toText());
}
}
