#include "fuzz/Fuzz.h"
#include "tests/support/JoinByScanning.h"
#include "tests/support/PlainProvider.h"
#include "tests/support/StubProvider.h"

#include <velk/model/EDAException.h>
#include <velk/provider/MultipleEDAProvider.h>
#include <velk/routing/Routing.h>

#include <QLoggingCategory>

#include <array>
#include <limits>

using namespace Qt::StringLiterals;
using namespace Velk;
using namespace VelkFuzz;

namespace {

QString pick(Decisions &decisions, const QStringList &texts)
{
    return texts.at(decisions.number(static_cast<int>(texts.size())));
}

QString reference(int number)
{
    return u"C%1"_s.arg(number);
}

QString pinNumber(Decisions &decisions)
{
    return QString::number(decisions.number(4) + 1);
}

/// The nets of a board, with the nodes that are put on them.
using Nodes = std::array<QStringList, 5>;

void place(const QString &node, Nodes &nodes, Decisions &decisions)
{
    const auto net = static_cast<std::size_t>(decisions.number(8));
    if (net < nodes.size())
        nodes.at(net).append(node);
    if (net == nodes.size()) { // the pin is on two nets
        nodes.front().append(node);
        nodes.back().append(node);
    }
}

// References and pin numbers may come up twice, parts may be unknown, and nodes may be on a pin that the part lacks.
void addComponent(StubProvider &board, Nodes &nodes, Decisions &decisions)
{
    const int oddity = decisions.number(16);
    const QString ref = reference(oddity == 1 ? 0 : static_cast<int>(board.components.size()));
    const QString type =
        pick(decisions, {u"Relay"_s, u"resistor"_s, u"Connector"_s, u"Source"_s, u"DUT"_s, u"CONNECTOR"_s, QString()});
    QStringList pins{u"1"_s, u"2"_s, u"1"_s};
    if (oddity != 2)
        pins[2] = u"3"_s;
    pins = pins.mid(0, decisions.number(3) + 1);
    board.add(ref, type, pins, pick(decisions, {QString(), u""_s, u"A"_s, u"B"_s}))->properties.insert(u"Id"_s, ref);
    if (oddity == 3)
        board.parts.removeLast();
    if (oddity == 4)
        pins.append(u"9"_s);
    for (const QString &pin : std::as_const(pins))
        place(ref + u'/' + pin, nodes, decisions);
}

void fill(StubProvider &board, Decisions &decisions)
{
    Nodes nodes;
    for (int count = decisions.number(8); count > 0; --count)
        addComponent(board, nodes, decisions);
    if (decisions.number(8) == 1)
        place(u"Z1/1"_s, nodes, decisions); // listed nowhere
    for (const QStringList &ofNet : nodes)
        board.connect(u"N%1"_s.arg(board.nets.size()), ofNet);
}

struct Query
{
    QMap<QString, QString> source;
    QString sourcePin;
    QMap<QString, QString> destination;
    QString destinationPin;
    int maxSwitches;
    int maxNodes;
    bool relaysAreInterfaces;
};

int limit(Decisions &decisions)
{
    constexpr std::array limits{3, -1, 0, 1, 2, 4, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()};
    return limits.at(static_cast<std::size_t>(decisions.number(static_cast<int>(limits.size()))));
}

QMap<QString, QString> properties(Decisions &decisions)
{
    const int number = decisions.number(10);
    if (number < 7)
        return {{u"Id"_s, reference(number)}};
    return {{EDAComponent::TYPE, pick(decisions, {u"Source"_s, u"DUT"_s, u"Relay"_s, u""_s})},
            {EDAComponent::IDENTIFER, pick(decisions, {u"A"_s, u"B"_s, u""_s})}};
}

Query query(Decisions &decisions)
{
    return {properties(decisions), pinNumber(decisions), properties(decisions),   pinNumber(decisions),
            limit(decisions),      limit(decisions),     decisions.number(4) == 1};
}

// The trace would make every search exhaustive.
void switchTraceOff()
{
    static const bool isOff = (QLoggingCategory::setFilterRules(u"routing.debug=false"_s), true);
    Q_UNUSED(isOff)
}

Routing routingOf(EDAProvider &provider, const Query &query)
{
    Routing routing(&provider);
    routing.setMaxSwitchingComponentsPerPath(query.maxSwitches);
    routing.setMaxAdditionalNodesPerPath(query.maxNodes);
    if (query.relaysAreInterfaces)
        routing.setComponentTypesThatAreInterfaces({u"RELAY"_s, u"dut"_s});
    return routing;
}

/// The routes with their pins and nets, one a line, or what is unknown.
QString answer(EDAProvider &provider, const Query &query)
{
    QString text;
    try {
        for (const auto &path :
             routingOf(provider, query)
                 .findTracedPaths(query.source, query.sourcePin, query.destination, query.destinationPin)) {
            for (const auto &step : path.steps)
                text += u"%1 %2/%3/%4 "_s.arg(step.net->name, step.component->ref, step.entryPin, step.exitPin);
            text += path.lastNet->name;
            for (const auto &[node, net] : path.additionalNodes)
                text += u" | %1/%2@%3"_s.arg(node->ref, node->pin, net->name);
            text += u'\n';
        }
    } catch (const EDAException &exception) {
        text = exception.message();
    }
    return text;
}

/// Tries whether the limits that would do for a query without an answer do.
void requireReason(EDAProvider &provider, const Query &query)
{
    Routing routing = routingOf(provider, query);
    const auto reason = routing.explainNoPath(query.source, query.sourcePin, query.destination, query.destinationPin);
    require(reason.isComplete && *reason.isConnected == !reason.sufficientLimits.isEmpty(), u"no reason"_s);
    for (const SufficientLimits &limits : reason.sufficientLimits) {
        routing.setMaxSwitchingComponentsPerPath(limits.maxSwitchingComponents);
        routing.setMaxAdditionalNodesPerPath(limits.maxAdditionalNodes);
        routing.setMaxPaths(1);
        require(!routing.findPaths(query.source, query.sourcePin, query.destination, query.destinationPin).isEmpty(),
                u"limits that do not suffice"_s);
    }
}
}

/// Up to three boards and queries on them. Joining is compared with scanning, the pruned search with the exhaustive
/// one.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    switchTraceOff();
    Decisions decisions(toBytes(data, size));
    std::array<StubProvider, 3> boards;
    QList<EDAProvider *> pointers;
    for (int count = decisions.number(3); count >= 0; --count) {
        StubProvider &board = boards.at(static_cast<std::size_t>(count));
        fill(board, decisions);
        pointers.append(&board);
    }
    const QStringList connectorTypes{u"connector"_s};
    MultipleEDAProvider joined(pointers, connectorTypes);
    const QString nets = netsToText(joined.getNets());
    require(nets == netsToText(joinByScanning(pointers, connectorTypes)), u"joined to:\n"_s + nets);

    PlainProvider plain(joined);
    for (int count = decisions.number(3); count >= 0; --count) {
        const Query next = query(decisions);
        const QString pruned = answer(joined, next);
        const QString exhaustive = answer(plain, next);
        require(pruned == exhaustive, u"%1pruned:\n%2\nexhaustive:\n%3"_s.arg(nets, pruned, exhaustive));
        if (pruned.isEmpty())
            requireReason(joined, next);
    }
    return 0;
}
