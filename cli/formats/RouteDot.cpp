#include "cli/formats/RouteDot.h"

#include "cli/RouteTracing.h"

#include <QSet>

#include <set>
#include <tuple>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

// DOT ends at a NUL. An identifier has a sequence instead that no other text can have, since backslashes are doubled.
QString quotedId(QString text)
{
    text.replace(u'\\', u"\\\\"_s).replace(u'"', u"\\\""_s).replace(QChar(u'\0'), u"\\x00"_s);
    return u"\"%1\""_s.arg(text);
}

QString quotedText(QString text)
{
    return quotedId(text.replace(QChar(u'\0'), u"\\x00"_s));
}

QString netLabel(const QString &name)
{
    constexpr qsizetype longest = 40;
    return name.size() <= longest ? name : name.left(longest - 1) + QChar(0x2026);
}

/// Collects statements, each once, in the order in which they are first made.
class Graph
{
public:
    Graph(const RouteReport &routes, const RouteTracing &routeTracing)
        : report(routes)
        , tracing(routeTracing)
    {
    }

    void addEnd(const EDANetNode &end, qsizetype net, const QString &rank)
    {
        const QString id = pinId(u"end"_s, end);
        add(u"{ rank=%1; %2 [label=%3, shape=box, style=\"rounded,filled\", fillcolor=\"#bfe3c8\"]; }"_s.arg(
            rank, id, quotedText(report.pinNames.text(end.ref, end.pin))));
        add(u"%1 -- %2 [penwidth=2];"_s.arg(id, addNet(net)));
    }

    /// False where it is there already.
    bool addCrossing(const Crossing &crossing)
    {
        if (!crossings.insert({crossing.from, crossing.to, crossing.ref, crossing.entryPin, crossing.exitPin}).second)
            return false;
        const QString component = addComponent(crossing.ref);
        // Numbers on the lines only where there is a choice.
        const bool namesPins = hasManyPins(crossing.ref);
        addLine(addNet(crossing.from), component, namesPins ? crossing.entryPin : QString());
        addLine(component, addNet(crossing.to), namesPins ? crossing.exitPin : QString());
        return true;
    }

    void addSideConnection(const EDANetNode &node, qsizetype net)
    {
        const QString id = pinId(u"side"_s, node);
        add(u"%1 [label=%2, shape=box, style=\"rounded,filled\", fillcolor=\"#f7d9b5\"];"_s.arg(
            id, quotedText(report.pinNames.text(node.ref, node.pin))));
        add(u"%1 -- %2 [style=dashed];"_s.arg(addNet(net), id));
    }

    QByteArray toDot() const
    {
        const QString head = u"graph routes {\n"
                             "    rankdir=LR;\n"
                             "    nodesep=0.15;\n"
                             "    node [fontname=\"Helvetica\", fontsize=11];\n"
                             "    edge [fontname=\"Helvetica\", fontsize=9, color=\"#555555\"];\n"_s;
        QString text = head;
        for (const QString &statement : statements)
            text += u"    %1\n"_s.arg(statement);
        return (text + u"}\n"_s).toUtf8();
    }

private:
    void add(const QString &statement)
    {
        if (known.contains(statement))
            return;
        known.insert(statement);
        statements.append(statement);
    }

    static QString pinId(const QString &role, const EDANetNode &node)
    {
        return quotedId(u"%1 %2 %3"_s.arg(role, node.ref, node.pin));
    }

    QString addNet(qsizetype net)
    {
        QString id = quotedId(u"net %1"_s.arg(net));
        add(u"%1 [label=%2, tooltip=%3, shape=ellipse, color=\"#3b6ea5\", fontcolor=\"#3b6ea5\"];"_s.arg(
            id, quotedText(netLabel(tracing.net(net).name)), quotedText(tracing.net(net).name)));
        return id;
    }

    QString addComponent(const QString &ref)
    {
        const auto component = report.netlist.getComponentByRef(ref);
        QString id = quotedId(u"component "_s + ref);
        add(u"%1 [label=%2, tooltip=%3, shape=box, style=filled, fillcolor=\"#e8eef5\"];"_s.arg(
            id, quotedText(ref), quotedText(component->type() + u' ' + component->value)));
        return id;
    }

    void addLine(const QString &from, const QString &to, const QString &label)
    {
        // Routes may cross a component in both directions; its two lines are drawn once.
        if (!known.contains(line(to, from, label)))
            add(line(from, to, label));
    }

    static QString line(const QString &from, const QString &to, const QString &label)
    {
        return label.isEmpty() ? u"%1 -- %2;"_s.arg(from, to)
                               : u"%1 -- %2 [label=%3];"_s.arg(from, to, quotedText(label));
    }

    bool hasManyPins(const QString &ref) const
    {
        return report.netlist.getPartByName(report.netlist.getComponentByRef(ref)->part)->pins.size() > 2;
    }

    const RouteReport &report;
    const RouteTracing &tracing;
    QStringList statements;
    QSet<QString> known;
    std::set<std::tuple<qsizetype, qsizetype, QString, QString, QString>> crossings;
};
}

QByteArray drawRoutes(const RouteReport &report)
{
    const RouteTracing tracing(report);
    const qsizetype first = tracing.netOf(*report.source);
    Graph graph(report, tracing);
    const auto routes = tracing.traced();
    for (qsizetype i = 0; i < routes.size(); ++i) {
        graph.addEnd(*report.source, first, u"source"_s);
        if (tracing.isLast(first))
            graph.addEnd(*report.destination, first, u"sink"_s);
        for (const Crossing &crossing : routes.at(i).crossings) {
            if (graph.addCrossing(crossing) && tracing.isLast(crossing.to))
                graph.addEnd(*report.destination, crossing.to, u"sink"_s);
        }
        for (qsizetype node = 0; node < routes.at(i).connectedNets.size(); ++node)
            graph.addSideConnection(*report.paths.at(i).additionalNodes.at(node), routes.at(i).connectedNets.at(node));
    }
    return graph.toDot();
}
}
