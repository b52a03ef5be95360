#include "fuzz/Fuzz.h"
#include "tests/support/PlainPlanning.h"
#include "tests/support/StubProvider.h"

#include <velkplanning/ConnectionPlanner.h>

#include <velk/model/EDAException.h>
#include <velk/switching/CsvTable.h>
#include <velk/switching/PositionText.h>
#include <velk/switching/RelayTable.h>

#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <optional>

using namespace Qt::StringLiterals;
using namespace Velk;
using namespace VelkFuzz;

namespace {

QStringList textsOf(const QList<ContactPosition> &positions)
{
    QStringList texts;
    for (const ContactPosition &position : positions) {
        texts.append(position.name + u':');
        for (const Contact &contact : position.closed)
            texts.last() += u' ' + contact.pin + u'-' + contact.otherPin;
    }
    return texts;
}

/// "NAME: PIN-PIN PIN-PIN" for each position; nothing where the text is wrong.
std::optional<QStringList> readPositionsPlainly(const QString &text, const QSet<QString> &pins)
{
    static const QRegularExpression separator(u"[\\s,]+"_s, QRegularExpression::UseUnicodePropertiesOption);
    QStringList positions;
    for (const QString &written : text.split(u'/')) {
        const bool isNamed = written.contains(u':');
        positions.append((isNamed ? written.section(u':', 0, 0).trimmed() : QString()) + u':');
        if (isNamed && positions.last().size() == 1)
            return {};
        for (const QString &pair :
             (isNamed ? written.section(u':', 1) : written).split(separator, Qt::SkipEmptyParts)) {
            const QStringList ends = pair.split(u'-');
            if (ends.size() != 2 || !pins.contains(ends.at(0)) || !pins.contains(ends.at(1)) ||
                ends.at(0) == ends.at(1))
                return {};
            positions.last() += u' ' + pair;
        }
    }
    return positions.size() > 1 ? std::optional(positions) : std::nullopt;
}

void checkPositions(const QString &text, const QStringList &pinNumbers)
{
    const QSet<QString> pins(pinNumbers.cbegin(), pinNumbers.cend());
    const PositionText read = readPositions(text, pins);
    require(read.problem.isEmpty() == !read.positions.isEmpty(), u"a problem or positions of "_s + text);
    require(read.column <= text.size() + 1, u"a place behind "_s + text);
    const auto plain = readPositionsPlainly(text, pins);
    require(plain ? textsOf(read.positions) == *plain : read.positions.isEmpty(), u"positions of "_s + text);
    if (plain)
        require(textsOf(readPositions(positionsText(read.positions), pins).positions) == *plain, u"text of "_s + text);
}

/// A few nets with relays, passives and interfaces, as decided.
class Board
{
public:
    explicit Board(const QByteArray &input, const QStringList &positionTexts)
        : decisions(input)
    {
        for (int i = decisions.number(7); i > 0; --i)
            addRelay(u"K%1"_s.arg(i), positionTexts);
        for (int i = decisions.number(3); i > 0; --i)
            add(u"R%1"_s.arg(i), u"Resistor"_s, {u"1"_s, u"2"_s});
        for (int i = decisions.number(4); i > 0; --i)
            add(u"S%1"_s.arg(i), u"Source"_s, {u"1"_s, u"2"_s});
        for (const QStringList &ofNet : nodes)
            netlist.connect(u"N%1"_s.arg(netlist.nets.size()), ofNet);
    }

    StubProvider netlist;
    Decisions decisions; ///< what is left of the input

private:
    void addRelay(const QString &ref, const QStringList &positionTexts)
    {
        const QStringList numbers =
            decisions.number(2) == 0 ? u"1 2 3 4 A1"_s.split(u' ') : u"11 12 14 A1 24"_s.split(u' ');
        const QStringList pins = numbers.mid(0, decisions.number(4) + 2);
        const auto relay = add(ref, u"Relay"_s, pins);
        const int text = decisions.number(8);
        if (text < positionTexts.size()) {
            checkPositions(positionTexts.at(text), pins);
            relay->properties.insert(u"Positions"_s, positionTexts.at(text));
        }
        if (decisions.number(4) == 1)
            relay->properties.insert(u"Gang"_s, u"G"_s);
    }

    QSharedPointer<EDAComponent> add(const QString &ref, const QString &type, const QStringList &pins)
    {
        auto component = netlist.add(ref, type, pins);
        for (const QString &pin : pins) {
            const auto net = static_cast<std::size_t>(decisions.number(8));
            if (net < nodes.size())
                nodes.at(net).append(ref + u'/' + pin);
        }
        const int oddity = decisions.number(16);
        if (oddity == 1)
            component->properties.insert(u"dnp"_s, QString());
        if (oddity == 2)
            component->properties.insert(u"Through"_s, u"no"_s);
        if (oddity == 3)
            nodes.front().append(ref + u"/1"_s); // the pin may be on two nets
        return component;
    }

    std::array<QStringList, 6> nodes; ///< on each net
};

/// Those of a table; nothing where it is not one.
QList<ExpectedConnection> connectionsOf(const QByteArray &text, const SwitchingModel &model)
{
    QList<ExpectedConnection> connections;
    try {
        const CsvTable table(text, u"connections"_s);
        const auto pinOf = [&](const CsvTable::Row &row, const QString &end) -> InterfacePin {
            const QString &ref = row.cells.at(table.requiredColumn(end));
            const QString &pin = row.cells.at(table.requiredColumn(end + u" pin"_s));
            return {ref, pin, model.netOf(ref, pin)};
        };
        for (const CsvTable::Row &row : table.rows())
            connections.append({pinOf(row, u"from"_s), pinOf(row, u"to"_s)});
    } catch (const EDAException &) {
        return {};
    }
    return connections;
}

ConnectionRequest requestOf(const QList<ExpectedConnection> &connections, const SwitchingModel &model,
                            Decisions &decisions)
{
    ConnectionRequest request;
    request.connections = connections;
    if (model.componentCount() > 0 && decisions.number(4) == 1)
        request.excludedComponents = {decisions.number(model.componentCount())};
    if (model.componentCount() > 0 && decisions.number(4) == 1)
        request.allowedComponents = {decisions.number(model.componentCount())};
    if (decisions.number(4) == 1)
        request.excludedNets = {decisions.number(model.netCount())};
    request.allowsSideConnections = decisions.number(4) == 1;
    request.forbidsCouplings = decisions.number(4) == 1;
    request.trustsUnknown = decisions.number(4) == 1;
    return request;
}

bool isOnNet(const InterfacePin &pin, const SwitchingModel &model)
{
    return pin.net != SwitchingModel::none && !model.netNames(pin.net).isEmpty();
}

bool isAnswerable(const ConnectionRequest &request, const SwitchingModel &model)
{
    return model.errors().isEmpty() &&
           std::all_of(request.connections.cbegin(), request.connections.cend(),
                       [&](const auto &asked) { return isOnNet(asked.from, model) && isOnNet(asked.to, model); });
}

/// Whether all states can be tried.
bool isSmall(const ConnectionRequest &request, const SwitchingModel &model)
{
    int states = 1;
    for (int gang = 0; gang < model.gangCount() && states <= 300; ++gang)
        states *= model.gang(gang).positionCount;
    return states <= 300 && request.connections.size() <= 6;
}

void checkPlan(const ConnectionRequest &request, const SwitchingModel &model, const StubProvider &netlist)
{
    bool isRefused = false;
    ConnectionPlan plan;
    try {
        plan = ConnectionPlanner(model).plan(request);
    } catch (const EDAException &) {
        isRefused = true;
    }
    require(isRefused != isAnswerable(request, model), u"a request that is answered or refused"_s);
    if (isRefused || !isSmall(request, model))
        return;
    const QString difference = PlainPlanning(model, netlist, request).differenceOf(plan);
    require(difference.isEmpty(), u"a plan on\n"_s + netsToText(netlist.nets) + difference);
}
}

/// Four parts, which lines "--" separate: the decisions that make a board, fields `Positions` of its relays, a table of
/// relays, and a table of connections, for which the plan is compared with trying all states.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes = toBytes(data, size);
    std::array<QByteArray, 4> parts;
    qsizetype begin = 0;
    for (QByteArray &part : parts) {
        const qsizetype line = bytes.indexOf("\n--\n", begin);
        const qsizetype end = line < 0 || &part == &parts.back() ? bytes.size() : line;
        part = bytes.mid(begin, end - begin);
        begin = std::min(end + 4, bytes.size());
    }
    Board board(parts[0], decoded(parts[1]).split(u'\n'));
    QList<RelayTable> tables;
    try {
        tables.append(RelayTable(CsvTable(parts[2], u"relays"_s)));
    } catch (const EDAException &) {
        tables.clear();
    }
    const SwitchingModel model(board.netlist, {}, tables);
    checkPlan(requestOf(connectionsOf(parts[3], model), model, board.decisions), model, board.netlist);
    return 0;
}
