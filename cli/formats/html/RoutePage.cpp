#include "cli/formats/html/RoutePage.h"

#include "cli/formats/NoRouteText.h"
#include "cli/formats/RouteRelays.h"
#include "cli/formats/html/Page.h"
#include "cli/formats/html/RouteTables.h"

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

// There may be very many routes, and all that they hold is numbers.
QByteArray routesToText(const QList<TracedPath> &paths, RouteTables &tables)
{
    QByteArray text;
    for (const TracedPath &path : paths) {
        QByteArrayList crossed;
        for (qsizetype i = 0; i < path.steps.size(); ++i)
            crossed.append(QByteArray::number(tables.place(path.steps.at(i), *path.netAfter(i))));
        QByteArrayList connected;
        for (const TracedNode &connection : path.additionalNodes)
            connected.append(QByteArray::number(tables.place(connection)));
        text += text.isEmpty() ? "{" : ",{";
        text += "\"crossings\":[" + crossed.join(',') + "],\"connections\":[" + connected.join(',') + "]}";
    }
    return text;
}

QByteArray dataOf(const RouteReport &report)
{
    RouteTables tables(report.routing.componentTypesThatAreConnectors(), report.netlist, report.pinNames,
                       report.switching);
    const QJsonArray ends = tables.ends({report.source, report.destination});
    QJsonObject members{
        {u"boards"_s, QJsonArray::fromStringList(report.fileNames)},
        {u"source"_s, ends.first()},
        {u"destination"_s, ends.last()},
    };
    addLimits(report.routing, members);
    const QByteArray routes = routesToText(report.tracedPaths, tables);
    if (report.areThereMore)
        members.insert(u"more"_s, true);
    if (!report.switching)
        members.insert(u"asDrawn"_s, true);
    if (const QString leftOut = leftOutText(report); !leftOut.isEmpty())
        members.insert(u"leftOut"_s, leftOut);
    if (report.reason)
        members.insert(u"reason"_s, QJsonArray::fromStringList(reasonTexts(report)));
    tables.addTo(members);
    return toPageData(members).chopped(1) + ",\"routes\":[" + routes + "]}";
}
}

QByteArray routesToPage(const RouteReport &report)
{
    const QStringList scripts{u"text.js"_s,   u"theme.js"_s, u"components.js"_s, u"boards.js"_s, u"routes.js"_s,
                              u"filter.js"_s, u"list.js"_s,  u"diagram.js"_s,    u"steps.js"_s,  u"page.js"_s};
    return pageOf({u"page.html"_s, {u"page.css"_s}, scripts}, dataOf(report));
}
}
