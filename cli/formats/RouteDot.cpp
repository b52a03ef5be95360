#include "cli/formats/RouteDot.h"

#include "cli/formats/RouteRelays.h"

#include <QHash>
#include <QMap>
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
    explicit Graph(const RouteReport &routes)
        : report(routes)
    {
        const auto nets = routes.netlist.getNets();
        for (const auto &net : nets)
            places.insert(net.data(), places.size());
        for (const TracedPath &path : routes.tracedPaths)
            collectTasks(path);
    }

    void add(const TracedPath &path)
    {
        const EDANet &first = path.steps.isEmpty() ? *path.lastNet : *path.steps.first().net;
        addEnd(*report.source, first, u"source"_s);
        bool endsAnew = path.steps.isEmpty();
        for (qsizetype i = 0; i < path.steps.size(); ++i)
            endsAnew = addStep(path.steps.at(i), *path.netAfter(i));
        if (endsAnew)
            addEnd(*report.destination, *path.lastNet, u"sink"_s);
        for (const TracedNode &connection : path.additionalNodes)
            addSideConnection(*connection.node, *connection.net);
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
    // A component is drawn once, whatever the routes over it ask of it.
    void collectTasks(const TracedPath &path)
    {
        for (const TracedStep &step : path.steps) {
            auto &texts = tasks[step.component->ref];
            if (!texts.contains(step.position))
                texts.insert(step.position, crossingText(report, step));
        }
    }

    void addEnd(const EDANetNode &end, const EDANet &net, const QString &rank)
    {
        const QString id = pinId(u"end"_s, end);
        add(u"{ rank=%1; %2 [label=%3, shape=box, style=\"rounded,filled\", fillcolor=\"#bfe3c8\"]; }"_s.arg(
            rank, id, quotedText(report.pinNames.text(end.ref, end.pin))));
        add(u"%1 -- %2 [penwidth=2];"_s.arg(id, addNet(net)));
    }

    /// False where it is there already.
    bool addStep(const TracedStep &step, const EDANet &next)
    {
        if (!steps.insert({step.net.data(), &next, step.component->ref, step.entryPin, step.exitPin}).second)
            return false;
        const QString component = addComponent(*step.component);
        // Numbers on the lines only where there is a choice.
        const bool namesPins = hasManyPins(*step.component);
        addLine(addNet(*step.net), component, namesPins ? step.entryPin : QString());
        addLine(component, addNet(next), namesPins ? step.exitPin : QString());
        return true;
    }

    void addSideConnection(const EDANetNode &node, const EDANet &net)
    {
        const QString id = pinId(u"side"_s, node);
        add(u"%1 [label=%2, shape=box, style=\"rounded,filled\", fillcolor=\"#f7d9b5\"];"_s.arg(
            id, quotedText(report.pinNames.text(node.ref, node.pin))));
        add(u"%1 -- %2 [style=dashed];"_s.arg(addNet(net), id));
    }

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

    QString addNet(const EDANet &net)
    {
        QString id = quotedId(u"net %1"_s.arg(places.value(&net)));
        add(u"%1 [label=%2, tooltip=%3, shape=ellipse, color=\"#3b6ea5\", fontcolor=\"#3b6ea5\"];"_s.arg(
            id, quotedText(netLabel(net.name)), quotedText(net.name)));
        return id;
    }

    QString addComponent(const EDAComponent &component)
    {
        QString id = quotedId(u"component "_s + component.ref);
        const QString label = quotedText(QStringList(tasks.value(component.ref).values()).join(u", "_s));
        add(u"%1 [label=%2, tooltip=%3, shape=box, style=filled, fillcolor=\"#e8eef5\"];"_s.arg(
            id, label, quotedText(component.type() + u' ' + component.value)));
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

    bool hasManyPins(const EDAComponent &component) const
    {
        return report.netlist.getPartByName(component.part)->pins.size() > 2;
    }

    const RouteReport &report;
    QHash<const EDANet *, qsizetype> places;  ///< among the nets of the netlist
    QHash<QString, QMap<int, QString>> tasks; ///< of each component, by its position
    QStringList statements;
    QSet<QString> known;
    std::set<std::tuple<const EDANet *, const EDANet *, QString, QString, QString>> steps;
};
}

QByteArray drawRoutes(const RouteReport &report)
{
    Graph graph(report);
    for (const TracedPath &path : report.tracedPaths)
        graph.add(path);
    return graph.toDot();
}
}
