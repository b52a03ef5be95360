#include "cli/formats/RouteFormats.h"

#include "cli/formats/Json.h"
#include "cli/formats/NoRouteText.h"
#include "cli/formats/RouteDot.h"
#include "cli/formats/RouteRelays.h"
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

/// A route without what tracing adds.
RoutingPath pathAt(const RouteReport &report, qsizetype route)
{
    if (!report.paths.isEmpty())
        return report.paths.at(route);
    RoutingPath path;
    for (const TracedStep &step : report.tracedPaths.at(route).steps)
        path.switchingComponents.append(step.component);
    for (const TracedNode &connection : report.tracedPaths.at(route).additionalNodes)
        path.additionalNodes.append(connection.node);
    return path;
}

QStringList switchTexts(const RouteReport &report, qsizetype route)
{
    if (!report.paths.isEmpty())
        return refsOf(report.paths.at(route).switchingComponents);
    QStringList texts;
    for (const TracedStep &step : report.tracedPaths.at(route).steps)
        texts.append(crossingText(report, step));
    return texts;
}

qsizetype switchesOf(const RouteReport &report, qsizetype route)
{
    return report.paths.isEmpty() ? report.tracedPaths.at(route).steps.size()
                                  : report.paths.at(route).switchingComponents.size();
}

/// The ends are painted already.
QString routeText(const RouteReport &report, const QString &source, qsizetype route, const QString &destination,
                  const Colour &colour)
{
    const QStringList switches = switchTexts(report, route);
    const QStringList connections = pinTexts(report.pinNames, pathAt(report, route).additionalNodes);
    QStringList stations{source};
    stations += painted(colour, Colour::Role::Reference, switches);
    stations.append(destination);
    QString remarks = switchCount(switches.size());
    if (!connections.isEmpty())
        remarks += u"; also connects "_s + painted(colour, Colour::Role::SideConnection, connections).join(u", "_s);
    return u"%1 (%2)"_s.arg(stations.join(u" -> "_s), remarks);
}

// "274 routes: 1 of 2 switches, 21 of 4, 252 of 6". The routes are sorted by their number of switches.
QString countText(const RouteReport &report)
{
    const qsizetype routes = report.routeCount();
    QStringList counts;
    for (qsizetype first = 0; first < routes;) {
        const qsizetype switches = switchesOf(report, first);
        qsizetype end = first;
        while (end < routes && switchesOf(report, end) == switches)
            ++end;
        counts.append(u"%1 of %2"_s.arg(QString::number(end - first),
                                        counts.isEmpty() ? switchCount(switches) : QString::number(switches)));
        first = end;
    }
    return u"%1: %2"_s.arg(routes == 1 ? u"1 route"_s : u"%1 routes"_s.arg(routes), counts.join(u", "_s));
}

/// With what is not shown.
QString lastLine(const RouteReport &report)
{
    QStringList texts{countText(report)};
    if (report.areThereMore)
        texts.append(u"there are more"_s);
    const QString leftOut = leftOutText(report);
    if (!leftOut.isEmpty())
        texts.append(leftOut);
    return texts.join(u"; "_s);
}

QJsonObject pinOfComponentToJson(const RouteReport &report, const EDANetNode &node)
{
    const auto component = report.netlist.getComponentByRef(node.ref);
    const auto part = report.netlist.getPartByName(component->part);
    const auto pin = part ? part->getPinByNumber(node.pin) : nullptr;
    return {{u"component"_s, componentToJson(*component)}, {u"pin"_s, pinToJson(pin ? *pin : EDAPin())}};
}

QJsonObject routeToJson(const RouteReport &report, const TracedPath &path)
{
    QJsonArray connections;
    for (const TracedNode &connection : path.additionalNodes)
        connections.append(pinOfComponentToJson(report, *connection.node));
    QJsonObject members{{u"switchingComponents"_s, stepsToJson(path.steps)}, {u"additionalConnections"_s, connections}};
    if (report.switching)
        members.insert(u"positions"_s, positionsToJson(report, path));
    return members;
}

QByteArray routesToText(const RouteReport &report, const Colour &colour)
{
    const qsizetype routes = report.routeCount();
    if (routes == 0) {
        const QString text =
            u"no route from %1 to %2"_s.arg(endText(report, report.source), endText(report, report.destination));
        return printable(text).toUtf8() + '\n';
    }
    const auto numberWidth = QString::number(routes).size();
    const QString source = colour.paint(Colour::Role::End, endText(report, report.source));
    const QString destination = colour.paint(Colour::Role::End, endText(report, report.destination));
    QByteArray text;
    for (qsizetype i = 0; i < routes; ++i) {
        const QString number = QString::number(i + 1).rightJustified(numberWidth);
        const QString route = routeText(report, source, i, destination, colour);
        text += u"%1. %2\n"_s.arg(number, route).toUtf8();
    }
    return text + lastLine(report).toUtf8() + '\n';
}

/// What CSV tells of relays, in columns behind those that ways as drawn have.
QStringList relayCells(const RouteReport &report, const TracedPath &path)
{
    QStringList pins;
    for (const TracedStep &step : path.steps)
        pins.append(step.entryPin + u'-' + step.exitPin);
    QStringList cells{pins.join(u' ')};
    for (const RelayTask task : {RelayTask::Set, RelayTask::StayAtRest, RelayTask::Unknown})
        cells.append(relaysWith(task, report, path).join(u' '));
    return cells;
}

void routesToCsv(const RouteReport &report, CsvReader reader, QIODevice &device)
{
    CsvWriter csv(device, reader);
    const bool hasRelays = report.switching.has_value();
    QStringList columns{
        u"route"_s, u"switches"_s, u"source"_s, u"switching components"_s, u"dut"_s, u"additional connections"_s};
    if (hasRelays)
        columns += {u"pins"_s, u"set"_s, u"rest"_s, u"unknown"_s};
    csv.write(columns);
    const QString source = endText(report, report.source);
    const QString destination = endText(report, report.destination);
    for (qsizetype i = 0; i < report.routeCount(); ++i) {
        const RoutingPath path = pathAt(report, i);
        const QStringList cells{QString::number(i + 1),
                                QString::number(path.switchingComponents.size()),
                                source,
                                refsOf(path.switchingComponents).join(u' '),
                                destination,
                                pinTexts(report.pinNames, path.additionalNodes).join(u' ')};
        csv.write(hasRelays ? cells + relayCells(report, report.tracedPaths.at(i)) : cells);
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
    QJsonObject members{{u"source"_s, pinOfComponentToJson(report, *report.source)},
                        {u"destination"_s, pinOfComponentToJson(report, *report.destination)}};
    if (report.areThereMore)
        members.insert(u"more"_s, true);
    if (report.reason)
        members.insert(u"reason"_s, reasonToJson(report));
    if (report.switching)
        members.insert(u"unknown"_s, QJsonArray::fromStringList(unknownRelays(report)));
    if (report.leftOut)
        members.insert(u"leftOut"_s, *report.leftOut);
    const auto insertNames = [&](const QString &member, const QStringList &names) {
        if (!names.isEmpty())
            members.insert(member, QJsonArray::fromStringList(names));
    };
    insertNames(u"excludedComponents"_s, report.routing.excludedComponents());
    insertNames(u"excludedNets"_s, report.routing.excludedNets());
    writeJson(device, members, u"routes"_s, report.tracedPaths.size(),
              [&report](qsizetype i) { return routeToJson(report, report.tracedPaths.at(i)); });
}

const Formats<RouteReport> &routeFormats()
{
    static const Formats<RouteReport> formats{
        {"text", writeAsText}, {"json", writeAsJson}, {"csv", writeAsCsv}, {"dot", writeAsDot}, {"html", writeAsPage}};
    return formats;
}

bool needsTracedPaths(const std::string &format)
{
    return format != "text" && format != "csv";
}

bool tellsLeftOut(const std::string &format)
{
    return format != "csv" && format != "dot";
}
}
