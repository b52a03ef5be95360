#include "cli/formats/RouteFormats.h"

#include "cli/formats/Json.h"
#include "cli/formats/NoRouteText.h"
#include "cli/formats/RouteDot.h"
#include "cli/formats/html/RoutePage.h"
#include "cli/terminal/Colour.h"
#include "cli/terminal/Output.h"
#include "cli/terminal/Terminal.h"

#include <velk/naming/References.h>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

QStringList pinTexts(const PinNames &pinNames, const QList<QSharedPointer<EDANetNode>> &nodes)
{
    QStringList texts;
    for (const auto &node : nodes)
        texts.append(pinNames.text(node->ref, node->pin));
    return texts;
}

QString endText(const RouteReport &report, const QSharedPointer<EDANetNode> &end)
{
    return report.pinNames.text(end->ref, end->pin);
}

QStringList painted(const Colour &colour, Colour::Role role, QStringList texts)
{
    for (QString &text : texts)
        text = colour.paint(role, text);
    return texts;
}

/// The ends are painted already.
QString routeText(const RouteReport &report, const QString &source, const RoutingPath &path, const QString &destination,
                  const Colour &colour)
{
    QStringList stations{source};
    stations += painted(colour, Colour::Role::Reference, refsOf(path.switchingComponents));
    stations.append(destination);
    QString remarks = switchCount(path.switchingComponents.size());
    if (!path.additionalNodes.isEmpty()) {
        const QStringList pins = pinTexts(report.pinNames, path.additionalNodes);
        remarks += u"; also connects "_s + painted(colour, Colour::Role::SideConnection, pins).join(u", "_s);
    }
    return u"%1 (%2)"_s.arg(stations.join(u" -> "_s), remarks);
}

// "274 routes: 1 of 2 switches, 21 of 4, 252 of 6". The paths are sorted by their number of switches.
QString countText(const QList<RoutingPath> &paths)
{
    QStringList counts;
    for (qsizetype first = 0; first < paths.size();) {
        const qsizetype switches = paths.at(first).switchingComponents.size();
        qsizetype end = first;
        while (end < paths.size() && paths.at(end).switchingComponents.size() == switches)
            ++end;
        counts.append(u"%1 of %2"_s.arg(QString::number(end - first),
                                        counts.isEmpty() ? switchCount(switches) : QString::number(switches)));
        first = end;
    }
    return u"%1: %2"_s.arg(paths.size() == 1 ? u"1 route"_s : u"%1 routes"_s.arg(paths.size()), counts.join(u", "_s));
}

QJsonArray connectionsToJson(const EDAProvider &netlist, const QList<QSharedPointer<EDANetNode>> &nodes)
{
    QJsonArray connections;
    for (const auto &node : nodes) {
        const auto component = netlist.getComponentByRef(node->ref);
        const auto part = netlist.getPartByName(component->part);
        if (part.isNull())
            continue;
        const auto pin = part->getPinByNumber(node->pin);
        connections.append(
            QJsonObject{{u"component"_s, componentToJson(*component)}, {u"pin"_s, pinToJson(pin ? *pin : EDAPin())}});
    }
    return connections;
}

QJsonObject routeToJson(const RouteReport &report, const RoutingPath &path)
{
    QJsonArray switchingComponents;
    for (const auto &component : path.switchingComponents)
        switchingComponents.append(componentToJson(*component));
    return {{u"switchingComponents"_s, switchingComponents},
            {u"additionalConnections"_s, connectionsToJson(report.netlist, path.additionalNodes)}};
}

QByteArray routesToText(const RouteReport &report, const Colour &colour)
{
    if (report.paths.isEmpty()) {
        const QString text =
            u"no route from %1 to %2"_s.arg(endText(report, report.source), endText(report, report.destination));
        return printable(text).toUtf8() + '\n';
    }
    const auto numberWidth = QString::number(report.paths.size()).size();
    const QString source = colour.paint(Colour::Role::End, endText(report, report.source));
    const QString destination = colour.paint(Colour::Role::End, endText(report, report.destination));
    QByteArray text;
    for (qsizetype i = 0; i < report.paths.size(); ++i) {
        const QString number = QString::number(i + 1).rightJustified(numberWidth);
        const QString route = routeText(report, source, report.paths.at(i), destination, colour);
        text += u"%1. %2\n"_s.arg(number, route).toUtf8();
    }
    return text + countText(report.paths).toUtf8() + (report.areThereMore ? "; there are more\n" : "\n");
}

void routesToCsv(const RouteReport &report, CsvReader reader, QIODevice &device)
{
    CsvWriter csv(device, reader);
    csv.write(
        {u"route"_s, u"switches"_s, u"source"_s, u"switching components"_s, u"dut"_s, u"additional connections"_s});
    const QString source = endText(report, report.source);
    const QString destination = endText(report, report.destination);
    for (qsizetype i = 0; i < report.paths.size(); ++i) {
        const RoutingPath &path = report.paths.at(i);
        csv.write({QString::number(i + 1), QString::number(path.switchingComponents.size()), source,
                   refsOf(path.switchingComponents).join(u' '), destination,
                   pinTexts(report.pinNames, path.additionalNodes).join(u' ')});
    }
}

void writeAsText(const RouteReport &report, const OutputTarget &target)
{
    writeText(target.fileName, routesToText(report, Colour::forOutput(target.fileName)));
}

void writeAsJson(const RouteReport &report, const OutputTarget &target)
{
    writeOutput(target.fileName, [&](QIODevice &device) { routesToJson(report, device); });
}

void writeAsCsv(const RouteReport &report, const OutputTarget &target)
{
    writeOutput(target.fileName, [&](QIODevice &device) { routesToCsv(report, target.csvReader, device); });
}

void writeAsDot(const RouteReport &report, const OutputTarget &target)
{
    writeOutput(target.fileName, drawRoutes(report));
}

void writeAsPage(const RouteReport &report, const OutputTarget &target)
{
    writeOutput(target.fileName, routesToPage(report));
}
}

void routesToJson(const RouteReport &report, QIODevice &device)
{
    QJsonObject members;
    if (report.areThereMore)
        members.insert(u"more"_s, true);
    if (report.reason)
        members.insert(u"reason"_s, reasonToJson(report));
    writeJson(device, members, u"routes"_s, report.paths.size(),
              [&report](qsizetype i) { return routeToJson(report, report.paths.at(i)); });
}

const Formats<RouteReport> &routeFormats()
{
    static const Formats<RouteReport> formats{
        {"text", writeAsText}, {"json", writeAsJson}, {"csv", writeAsCsv}, {"dot", writeAsDot}, {"html", writeAsPage}};
    return formats;
}

bool needsTracedPaths(const std::string &format)
{
    return format == "dot" || format == "html";
}
}
