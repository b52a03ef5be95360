#include "cli/RouteDrawing.h"

#include <QHash>
#include <QSet>

#include <utility>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

using Pin = std::pair<QString, QString>; ///< reference and pin number

/// A component crossed from one net to another.
struct Crossing
{
    qsizetype from;
    qsizetype to;
    QString ref;
    QString entryPin;
    QString exitPin;
};

/// The nets by number, the look-up of a pin's net and the way back from a list of switches to the nets
/// between.
class NetGraph
{
public:
    NetGraph(const EDAProvider &provider, const EDANetNode &destination)
        : netlist(provider)
        , nets(provider.getNets())
    {
        for (qsizetype net = 0; net < nets.size(); ++net) {
            for (const auto &node : std::as_const(nets.at(net)->nodes)) {
                // As in the search, a node lies on the first net that holds it, but ends a path on any.
                if (!netOfPin.contains({node->ref, node->pin}))
                    netOfPin.insert({node->ref, node->pin}, net);
                if (node->matches(destination.ref, destination.pin))
                    lastNets.insert(net);
            }
        }
    }

    qsizetype netOf(const EDANetNode &node) const { return netOfPin.value({node.ref, node.pin}, -1); }
    QString nameOf(qsizetype net) const { return nets.at(net)->name; }
    bool isLast(qsizetype net) const { return lastNets.contains(net); }

    /// All crossings by which a path can be taken: a path does not say by which pin it leaves a component.
    QList<Crossing> crossingsOf(const RoutingPath &path, qsizetype first) const
    {
        QList<QList<Crossing>> steps;
        QSet<qsizetype> reached{first};
        for (const auto &component : path.switchingComponents) {
            QList<Crossing> step = crossings(*component, reached);
            reached.clear();
            for (const Crossing &crossing : std::as_const(step))
                reached.insert(crossing.to);
            steps.append(std::move(step));
        }
        return thoseThatLeadToTheEnd(steps);
    }

private:
    QList<Crossing> crossings(const EDAComponent &component, const QSet<qsizetype> &from) const
    {
        QList<Crossing> result;
        const auto part = netlist.getPartByName(component.part);
        for (const auto &entry : std::as_const(part->pins)) {
            const qsizetype entryNet = netOfPin.value({component.ref, entry->number}, -1);
            if (!from.contains(entryNet))
                continue;
            for (const auto &exit : std::as_const(part->pins)) {
                const qsizetype exitNet = netOfPin.value({component.ref, exit->number}, -1);
                if (exitNet >= 0 && exitNet != entryNet)
                    result.append({entryNet, exitNet, component.ref, entry->number, exit->number});
            }
        }
        return result;
    }

    QList<Crossing> thoseThatLeadToTheEnd(const QList<QList<Crossing>> &steps) const
    {
        QList<Crossing> result;
        QSet<qsizetype> wanted = lastNets;
        for (auto step = steps.crbegin(); step != steps.crend(); ++step) {
            QSet<qsizetype> wantedBefore;
            for (const Crossing &crossing : *step) {
                if (!wanted.contains(crossing.to))
                    continue;
                wantedBefore.insert(crossing.from);
                result.append(crossing);
            }
            wanted = wantedBefore;
        }
        return result;
    }

    const EDAProvider &netlist;
    const QList<QSharedPointer<EDANet>> nets;
    QHash<Pin, qsizetype> netOfPin;
    QSet<qsizetype> lastNets; ///< those that hold the destination
};

QString quoted(QString text)
{
    text.replace(u'\\', u"\\\\"_s).replace(u'"', u"\\\""_s);
    return u"\"%1\""_s.arg(text);
}

QString netLabel(const QString &name)
{
    constexpr qsizetype longest = 40;
    return name.size() <= longest ? name : name.left(longest - 1) + QChar(0x2026);
}

/// Collects statements, each once, in the order in which they are first made.
class Drawing
{
public:
    Drawing(const RouteReport &routes, const NetGraph &netGraph)
        : report(routes)
        , graph(netGraph)
    {
    }

    void addEnd(const EDANetNode &end, qsizetype net, const QString &rank)
    {
        const QString id = pinId(u"end"_s, end);
        add(u"{ rank=%1; %2 [label=%3, shape=box, style=\"rounded,filled\", fillcolor=\"#bfe3c8\"]; }"_s.arg(
            rank, id, quoted(report.pinNames.text(end.ref, end.pin))));
        add(u"%1 -- %2 [penwidth=2];"_s.arg(id, addNet(net)));
    }

    void addCrossing(const Crossing &crossing)
    {
        const QString component = addComponent(crossing.ref);
        // Numbers on the lines only where there is a choice.
        const bool namesPins = hasManyPins(crossing.ref);
        addLine(addNet(crossing.from), component, namesPins ? crossing.entryPin : QString());
        addLine(component, addNet(crossing.to), namesPins ? crossing.exitPin : QString());
    }

    void addSideConnection(const EDANetNode &node)
    {
        const QString id = pinId(u"side"_s, node);
        add(u"%1 [label=%2, shape=box, style=\"rounded,filled\", fillcolor=\"#f7d9b5\"];"_s.arg(
            id, quoted(report.pinNames.text(node.ref, node.pin))));
        add(u"%1 -- %2 [style=dashed];"_s.arg(addNet(graph.netOf(node)), id));
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
        return quoted(u"%1 %2 %3"_s.arg(role, node.ref, node.pin));
    }

    QString addNet(qsizetype net)
    {
        QString id = quoted(u"net %1"_s.arg(net));
        add(u"%1 [label=%2, tooltip=%3, shape=ellipse, color=\"#3b6ea5\", fontcolor=\"#3b6ea5\"];"_s.arg(
            id, quoted(netLabel(graph.nameOf(net))), quoted(graph.nameOf(net))));
        return id;
    }

    QString addComponent(const QString &ref)
    {
        const auto component = report.netlist.getComponentByRef(ref);
        QString id = quoted(u"component "_s + ref);
        add(u"%1 [label=%2, tooltip=%3, shape=box, style=filled, fillcolor=\"#e8eef5\"];"_s.arg(
            id, quoted(ref), quoted(component->type() + u' ' + component->value)));
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
        return label.isEmpty() ? u"%1 -- %2;"_s.arg(from, to) : u"%1 -- %2 [label=%3];"_s.arg(from, to, quoted(label));
    }

    bool hasManyPins(const QString &ref) const
    {
        return report.netlist.getPartByName(report.netlist.getComponentByRef(ref)->part)->pins.size() > 2;
    }

    const RouteReport &report;
    const NetGraph &graph;
    QStringList statements;
    QSet<QString> known;
};
}

QByteArray drawRoutes(const RouteReport &report)
{
    const NetGraph graph(report.netlist, *report.destination);
    const qsizetype first = graph.netOf(*report.source);
    Drawing drawing(report, graph);
    for (const auto &path : report.paths) {
        drawing.addEnd(*report.source, first, u"source"_s);
        if (graph.isLast(first))
            drawing.addEnd(*report.destination, first, u"sink"_s);
        const auto crossings = graph.crossingsOf(path, first);
        for (const Crossing &crossing : crossings) {
            drawing.addCrossing(crossing);
            if (graph.isLast(crossing.to))
                drawing.addEnd(*report.destination, crossing.to, u"sink"_s);
        }
        for (const auto &node : path.additionalNodes)
            drawing.addSideConnection(*node);
    }
    return drawing.toDot();
}
}
