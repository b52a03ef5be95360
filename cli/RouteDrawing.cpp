#include "cli/RouteDrawing.h"

#include "cli/Netlist.h"

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
    explicit NetGraph(const EDAProvider &provider)
        : netlist(provider)
        , nets(provider.getNets())
    {
        for (qsizetype net = 0; net < nets.size(); ++net) {
            for (const auto &node : std::as_const(nets.at(net)->nodes)) {
                // As in the search, a node lies on the first net that holds it.
                if (!netOfPin.contains({node->ref, node->pin}))
                    netOfPin.insert({node->ref, node->pin}, net);
            }
        }
    }

    qsizetype netOf(const EDANetNode &node) const { return netOfPin.value({node.ref, node.pin}, -1); }
    QString nameOf(qsizetype net) const { return nets.at(net)->name; }

    /// All crossings by which a path can be taken: a path does not say by which pin it leaves a component.
    QList<Crossing> crossingsOf(const RoutingPath &path, qsizetype first, const EDANetNode &destination) const
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
        return thoseThatLeadTo(destination, steps);
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

    QList<Crossing> thoseThatLeadTo(const EDANetNode &destination, const QList<QList<Crossing>> &steps) const
    {
        QList<Crossing> result;
        QSet<qsizetype> wanted;
        for (qsizetype net = 0; net < nets.size(); ++net) {
            if (nets.at(net)->findNode(destination.ref, destination.pin))
                wanted.insert(net);
        }
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

    void addEnd(const QSharedPointer<EDANetNode> &end, const QString &rank)
    {
        const QString id = quoted(u"end "_s + pinText(report.netlist, end->ref, end->pin));
        add(u"{ rank=%1; %2 [label=%3, shape=box, style=\"rounded,filled\", fillcolor=\"#bfe3c8\"]; }"_s.arg(
            rank, id, quoted(pinText(report.netlist, end->ref, end->pin))));
        add(u"%1 -- %2 [penwidth=2];"_s.arg(id, addNet(graph.netOf(*end))));
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
        const QString text = quoted(pinText(report.netlist, node.ref, node.pin));
        const QString id = quoted(u"side "_s + pinText(report.netlist, node.ref, node.pin));
        add(u"%1 [label=%2, shape=box, style=\"rounded,filled\", fillcolor=\"#f7d9b5\"];"_s.arg(id, text));
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

    QString addNet(qsizetype net)
    {
        const QString id = quoted(u"net %1"_s.arg(net));
        add(u"%1 [label=%2, tooltip=%3, shape=ellipse, color=\"#3b6ea5\", fontcolor=\"#3b6ea5\"];"_s.arg(
            id, quoted(netLabel(graph.nameOf(net))), quoted(graph.nameOf(net))));
        return id;
    }

    QString addComponent(const QString &ref)
    {
        const auto component = report.netlist.getComponentByRef(ref);
        const QString id = quoted(u"component "_s + ref);
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
        return label.isEmpty() ? u"%1 -- %2;"_s.arg(from, to)
                               : u"%1 -- %2 [label=%3];"_s.arg(from, to, quoted(label));
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
    const NetGraph graph(report.netlist);
    Drawing drawing(report, graph);
    if (!report.paths.isEmpty()) {
        drawing.addEnd(report.source, u"source"_s);
        drawing.addEnd(report.destination, u"sink"_s);
    }
    for (const auto &path : report.paths) {
        const auto crossings = graph.crossingsOf(path, graph.netOf(*report.source), *report.destination);
        for (const Crossing &crossing : crossings)
            drawing.addCrossing(crossing);
        for (const auto &node : path.additionalNodes)
            drawing.addSideConnection(*node);
    }
    return drawing.toDot();
}
}
