#include "cli/formats/html/CoveragePage.h"

#include "cli/formats/html/Page.h"
#include "cli/formats/html/RouteTables.h"

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

/// Each row has a text of its own, so that a matrix of any size takes little more memory than its page.
template <typename Rows, typename ToText>
QByteArray listOf(const Rows &rows, const ToText &toText)
{
    QByteArrayList texts;
    for (const auto &row : rows)
        texts.append(toText(row));
    return '[' + texts.join(',') + ']';
}

QByteArray switchesToText(const QList<int> &row)
{
    return listOf(row, [](int switches) -> QByteArray {
        return switches == CoverageMatrix::unreached ? "null"_ba : QByteArray::number(switches);
    });
}

/// For each DUT pin [how many routes there are, [crossings of the first one], [its connections]], or null.
QByteArray firstRoutesToText(const FirstRoutes &routes, RouteTables &tables)
{
    QList<QByteArray> crossings;
    for (const auto &[step, next] : routes.crossings)
        crossings.append(QByteArray::number(tables.place(step, *next)));
    QList<QByteArray> connections;
    for (const TracedNode &connection : routes.connections)
        connections.append(QByteArray::number(tables.place(connection)));
    return listOf(routes.ofDuts, [&](const FirstRoute &route) -> QByteArray {
        if (route.routes == 0)
            return "null"_ba;
        return '[' + QByteArray::number(route.routes) + ',' +
               listOf(route.crossings, [&](int crossing) { return crossings.at(crossing); }) + ',' +
               listOf(route.connections, [&](int connection) { return connections.at(connection); }) + ']';
    });
}

QJsonArray criticalToData(const CoverageReport &report, RouteTables &tables)
{
    QJsonArray result;
    for (const auto &[component, lost] : *report.critical) {
        QJsonArray cells; // counted along one row after the other
        for (const auto &[source, dut] : lost)
            cells.append(source * report.duts.size() + dut);
        result.append(QJsonObject{{u"component"_s, tables.place(component->ref)}, {u"lost"_s, cells}});
    }
    return result;
}

QJsonValue switchesToData(int switches)
{
    return switches == CoverageMatrix::unreached ? QJsonValue() : switches;
}

/// By names, since a pin may be in one of the two matrices only.
QJsonArray differencesToData(const QList<PairDifference> &pairs)
{
    QJsonArray result;
    for (const auto &[source, dut, before, now] : pairs)
        result.append(QJsonArray{source, dut, switchesToData(before), switchesToData(now)});
    return result;
}

QJsonObject comparisonToData(const CoverageComparison &comparison)
{
    return {{u"file"_s, comparison.fileName},
            {u"lost"_s, differencesToData(comparison.lost)},
            {u"gained"_s, differencesToData(comparison.gained)},
            {u"longer"_s, differencesToData(comparison.longer)},
            {u"shorter"_s, differencesToData(comparison.shorter)}};
}

QList<QSharedPointer<EDANetNode>> nodesOf(const QList<NodeWithComponent> &pins)
{
    QList<QSharedPointer<EDANetNode>> nodes;
    for (const NodeWithComponent &pin : pins)
        nodes.append(pin.node);
    return nodes;
}

QByteArray dataOf(const CoverageReport &report)
{
    RouteTables tables(report.routing.componentTypesThatAreConnectors(), report.netlist, report.pinNames,
                       report.switching);
    QJsonObject members{
        {u"boards"_s, QJsonArray::fromStringList(report.fileNames)},
        {u"unknownRelays"_s, QJsonArray::fromStringList(report.unknownRelays)},
        {u"mostRoutes"_s, mostRoutesCounted},
        {u"sources"_s, tables.ends(nodesOf(report.sources))},
        {u"duts"_s, tables.ends(nodesOf(report.duts))},
    };
    addLimits(report.routing, members);
    if (!report.switching)
        members.insert(u"asDrawn"_s, true);
    if (report.critical)
        members.insert(u"critical"_s, criticalToData(report, tables));
    if (report.comparison)
        members.insert(u"compared"_s, comparisonToData(*report.comparison));
    const QByteArray routes =
        listOf(report.firstRoutes, [&](const FirstRoutes &row) { return firstRoutesToText(row, tables); });
    tables.addTo(members);
    return toPageData(members).chopped(1) + ",\"switches\":" + listOf(report.rows, switchesToText) +
           ",\"routes\":" + routes + '}';
}
}

QByteArray coverageToPage(const CoverageReport &report)
{
    const QStringList scripts{u"text.js"_s,   u"theme.js"_s,  u"components.js"_s, u"boards.js"_s,
                              u"routes.js"_s, u"filter.js"_s, u"diagram.js"_s,    u"steps.js"_s,
                              u"cells.js"_s,  u"grid.js"_s,   u"coverage.js"_s};
    return pageOf({u"coverage.html"_s, {u"page.css"_s, u"coverage.css"_s}, scripts}, dataOf(report));
}
}
