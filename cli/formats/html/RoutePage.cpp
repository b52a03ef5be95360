#include "cli/formats/html/RoutePage.h"

#include "cli/formats/Json.h"
#include "cli/formats/NoRouteText.h"

#include <QCryptographicHash>
#include <QFile>
#include <QJsonDocument>
#include <QMap>

#include <algorithm>
#include <tuple>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

/// Numbers things in the order in which they are first asked for, and keeps what is to be said of each.
template <typename Key>
class JsonTable
{
public:
    template <typename Describe>
    qsizetype place(const Key &key, const Describe &describe)
    {
        const auto known = places.constFind(key);
        if (known != places.cend())
            return *known;
        const QJsonValue description = describe();
        const qsizetype place = rows.size();
        places.insert(key, place);
        rows.append(description);
        return place;
    }

    QJsonArray rows;

private:
    QMap<Key, qsizetype> places;
};

class PageData
{
public:
    explicit PageData(const RouteReport &routes)
        : report(routes)
        , connectorTypes(routes.routing.componentTypesThatAreConnectors())
    {
    }

    // A data element ends at "</script" and knows no escapes but those of JSON.
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
        if (report.reason)
            members.insert(u"reason"_s, QJsonArray::fromStringList(reasonTexts(report)));
        members.insert(u"components"_s, components.rows);
        members.insert(u"nets"_s, nets.rows);
        members.insert(u"crossings"_s, crossings.rows);
        members.insert(u"connections"_s, connections.rows);
        const QByteArray text = QJsonDocument(members)
                                    .toJson(QJsonDocument::Compact)
                                    .replace('<', "\\u003c")
                                    .replace("\u2028", "\\u2028")
                                    .replace("\u2029", "\\u2029");
        return text.chopped(1) + ",\"routes\":[" + routes + "]}";
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
        const QString &ref = step.component->ref;
        return crossings.place({step.net.data(), &next, ref, step.entryPin, step.exitPin}, [&] {
            return QJsonObject{{u"component"_s, place(ref)},
                               {u"from"_s, place(*step.net)},
                               {u"to"_s, place(next)},
                               {u"entry"_s, pin(ref, step.entryPin)},
                               {u"exit"_s, pin(ref, step.exitPin)}};
        });
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
    JsonTable<std::tuple<const EDANet *, const EDANet *, QString, QString, QString>> crossings;
    JsonTable<std::tuple<const EDANet *, QString, QString>> connections;
};

QByteArray pageFile(const QString &name)
{
    QFile file(u":/routepage/"_s + name);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("the page lacks %s", qPrintable(name));
    return file.readAll();
}

QByteArray script()
{
    QByteArray text;
    for (const QString &name :
         {u"text.js"_s, u"routes.js"_s, u"list.js"_s, u"diagram.js"_s, u"steps.js"_s, u"page.js"_s})
        text += pageFile(name);
    return text;
}

// In the security policy, so that the browser runs nothing else, whatever a netlist holds.
QByteArray sourceHash(const QByteArray &text)
{
    return "'sha256-" + QCryptographicHash::hash(text, QCryptographicHash::Sha256).toBase64() + "'";
}
}

QByteArray routesToPage(const RouteReport &report)
{
    const QByteArray styleText = pageFile(u"page.css"_s);
    const QByteArray scriptText = script();
    const QMap<QByteArray, QByteArray> parts{{"style", styleText},
                                             {"style-hash", sourceHash(styleText)},
                                             {"script", scriptText},
                                             {"script-hash", sourceHash(scriptText)},
                                             {"data", PageData(report).toText()}};
    QByteArray page;
    const auto pieces = pageFile(u"page.html"_s).split('@'); // every other one is the name of a part
    for (qsizetype i = 0; i < pieces.size(); ++i)
        page += i % 2 == 0 ? pieces.at(i) : parts.value(pieces.at(i));
    return page;
}
}
