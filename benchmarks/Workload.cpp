#include "benchmarks/Workload.h"

#include <velk/kicad/KiCadNetParser.h>
#include <velk/kicad/KiCadReader.h>

#include <QFile>
#include <QStringList>

#include <algorithm>
#include <array>
#include <functional>
#include <stdexcept>

namespace VelkBenchmarks {

using namespace Qt::StringLiterals;
using namespace Velk;

namespace {

using Net = QSharedPointer<EDANet>;

QString number(qsizetype value)
{
    return QString::number(value);
}

/// Places components of a few kinds on one board, numbering them as a schematic editor does.
class BoardBuilder
{
public:
    BoardBuilder(Board &builtBoard, int slot, Properties boardProperties)
        : board(builtBoard)
        , slotText(number(slot))
        , properties(boardProperties)
    {
    }

    Net net(const QString &name) { return board.addNet(name); }

    void relay(const Net &a, const Net &b)
    {
        addPart(u"RELAY_SPST"_s, {u"1=A"_s, u"2=B"_s});
        const QString ref = switchComponent(u"K"_s, u"reed 0.5 A"_s, u"RELAY_SPST"_s, u"Relay"_s);
        a->addNode(ref, u"1"_s);
        b->addNode(ref, u"2"_s);
    }

    void changeOver(const Net &common, const Net &normallyClosed, const Net &normallyOpen)
    {
        addPart(u"RELAY_SPDT"_s, {u"1=COM"_s, u"2=NC"_s, u"3=NO"_s});
        const QString ref = switchComponent(u"K"_s, u"form C 2 A"_s, u"RELAY_SPDT"_s, u"Relay"_s);
        common->addNode(ref, u"1"_s);
        normallyClosed->addNode(ref, u"2"_s);
        normallyOpen->addNode(ref, u"3"_s);
    }

    void resistor(const Net &a, const Net &b)
    {
        addPart(u"R"_s, {u"1="_s, u"2="_s});
        const QString ref = switchComponent(u"R"_s, u"47R 0.1%"_s, u"R"_s, u"Resistor"_s);
        a->addNode(ref, u"1"_s);
        b->addNode(ref, u"2"_s);
    }

    /// Pins are named; their numbers count from 1.
    void instrument(const QString &device, qsizetype deviceNumber, const QStringList &pinNames, const QList<Net> &pins)
    {
        const auto component = addInterface(u"U"_s, device, u"Source"_s, pinNames, pins);
        component->properties.insert(EDAComponent::DEVICE, device);
        component->properties.insert(EDAComponent::DEVICE_NUMBER, number(deviceNumber));
        if (properties == Properties::AsExported)
            component->properties.insert(EDAComponent::GROUP, device);
    }

    void dut(qsizetype bench, const QStringList &pinNames, const QList<Net> &pins)
    {
        const auto component = addInterface(u"J"_s, u"SOCKET_"_s + number(pins.size()), u"DUT"_s, pinNames, pins);
        component->properties.insert(EDAComponent::BENCH, number(bench));
        if (properties == Properties::AsExported)
            component->properties.insert(EDAComponent::IDENTIFER, u"DUT"_s + number(bench));
    }

    /// The reference of a new connector half.
    QString connector(const QString &identifier, const QStringList &pinNumbers)
    {
        const QString name = u"DIN41612_03x32_ABC"_s;
        if (!board.hasPart(name)) {
            QStringList pins;
            for (const QString &pin : pinNumbers)
                pins.append(pin + u'=' + pin);
            addPart(name, pins);
        }
        const auto component = add(u"X"_s, u"Bus side"_s, name, u"Connector"_s);
        component->properties.insert(EDAComponent::IDENTIFER, identifier);
        if (properties == Properties::AsExported)
            component->properties.insert(u"ki_fp_filters"_s, u"DIN41612*"_s);
        return component->ref;
    }

private:
    void addPart(const QString &name, const QStringList &pins)
    {
        if (board.hasPart(name))
            return;
        const auto part = EDAPart::create(name, u"TestSystem"_s);
        for (const QString &pin : pins)
            part->pins.append(EDAPin::create(pin.section(u'=', 0, 0), pin.section(u'=', 1), u"passive"_s));
        board.addPart(part);
    }

    QSharedPointer<EDAComponent> add(const QString &letter, const QString &value, const QString &part,
                                     const QString &type)
    {
        auto component = EDAComponent::create(letter + number(++counts[letter]), value, part);
        component->properties.insert(EDAComponent::TYPE, type);
        if (properties == Properties::AsExported) {
            component->properties.insert(u"Sheetname"_s, QString());
            component->properties.insert(u"Sheetfile"_s, u"board.kicad_sch"_s);
            component->properties.insert(u"ki_keywords"_s, u"relay resistor instrument"_s);
        }
        board.addComponent(component);
        return component;
    }

    // Relays and resistors sit on sub-sheets, whose names carry properties.
    QString switchComponent(const QString &letter, const QString &value, const QString &part, const QString &type)
    {
        const auto component = add(letter, value, part, type);
        if (properties == Properties::Few)
            return component->ref;
        const int channel = counts[letter];
        const QString module = number(channel / 96 + 1);
        component->properties.insert(EDAComponent::DEVICE, u"RELAY_CARD"_s);
        component->properties.insert(EDAComponent::DEVICE_NUMBER, slotText);
        component->properties.insert(EDAComponent::CHANNEL, number(channel));
        component->properties.insert(EDAComponent::SLOT, slotText);
        component->properties.insert(EDAComponent::MODULE, module);
        component->properties.insert(u"Sheetname"_s, u"Slot="_s + slotText + u".Module="_s + module + u"-Relays"_s);
        return component->ref;
    }

    QSharedPointer<EDAComponent> addInterface(const QString &letter, const QString &part, const QString &type,
                                              const QStringList &pinNames, const QList<Net> &pins)
    {
        QStringList partPins;
        for (qsizetype i = 0; i < pins.size(); ++i)
            partPins.append(number(i + 1) + u'=' + pinNames.at(i));
        addPart(part, partPins);
        auto component = add(letter, part, part, type);
        for (qsizetype i = 0; i < pins.size(); ++i)
            pins.at(i)->addNode(component->ref, number(i + 1));
        return component;
    }

    Board &board;
    const QString slotText;
    const Properties properties;
    QHash<QString, int> counts;
};

/// The connectors between two boards. New ones are added as the pins run out.
class Cable
{
public:
    Cable(BoardBuilder &oneSide, BoardBuilder &otherSide, const QString &name)
        : one(oneSide)
        , other(otherSide)
        , identifier(name)
    {
        for (const QChar row : {u'a', u'b', u'c'}) {
            for (int pin = 1; pin <= 32; ++pin)
                pinNumbers.append(row + number(pin));
        }
    }

    void join(const Net &netOfOne, const Net &netOfOther)
    {
        if (pinsUsed % pinNumbers.size() == 0) {
            const QString name = identifier + u'.' + number(pinsUsed / pinNumbers.size() + 1);
            oneRef = one.connector(name, pinNumbers);
            otherRef = other.connector(name, pinNumbers);
        }
        const QString &pin = pinNumbers.at(pinsUsed++ % pinNumbers.size());
        netOfOne->addNode(oneRef, pin);
        netOfOther->addNode(otherRef, pin);
    }

private:
    BoardBuilder &one;
    BoardBuilder &other;
    const QString identifier;
    QStringList pinNumbers;
    qsizetype pinsUsed = 0;
    QString oneRef;
    QString otherRef;
};

constexpr int cardsPerStage = 3;

using GroundNets = std::vector<Net>; ///< by board

QMap<QString, QString> instrumentProperties(qsizetype deviceNumber)
{
    return {{EDAComponent::DEVICE, u"SMU"_s}, {EDAComponent::DEVICE_NUMBER, number(deviceNumber)}};
}

QMap<QString, QString> dutProperties(qsizetype bench)
{
    return {{EDAComponent::TYPE, u"DUT"_s}, {EDAComponent::BENCH, number(bench)}};
}

QStringList numberedTexts(const QString &text, int count)
{
    QStringList texts;
    for (int i = 1; i <= count; ++i)
        texts.append(text + number(i));
    return texts;
}

/// One instrument of the sparse system, the two stages of its multiplexer and the DUT at its ends:
///
///     board 1          boards 2 to 4                  boards 5 to 7                        board 8
///     U.HI - change-   A, B - relays - X1, X2 (from   X1 - relay, X2 - resistor - TARGET   DUT
///            over      both); four more from A and    the others - change-over - two
///            A / B     four from B alone              branches each, to other DUT pins
///
/// G is a line that hangs on A and B and has four monitor inputs: more than the default limit of additional nodes, so
/// no route leads over it. A, B and X2 have a monitor input each, which is an additional node of all routes over them.
class MultiplexerTree
{
public:
    static constexpr std::size_t linesOfEachBus = 4;

    MultiplexerTree(qsizetype treeNumber, BoardBuilder &instrumentBoard, BoardBuilder &firstStageCard,
                    BoardBuilder &secondStageCard, BoardBuilder &adapterBoard)
        : name(number(treeNumber))
        , instruments(instrumentBoard)
        , firstStage(firstStageCard)
        , secondStage(secondStageCard)
        , adapter(adapterBoard)
    {
    }

    void build(Ground ground, const GroundNets &grounds, Cable &toFirstStage, Cable &toSecondStage, Cable &toAdapter)
    {
        const Net high = instruments.net(u"/SMU"_s + name + u"_HI"_s);
        const std::array<Net, 2> buses{busOf(toFirstStage, u"A"_s), busOf(toFirstStage, u"B"_s)};
        instruments.changeOver(high, busesOnInstrumentBoard.at(0), busesOnInstrumentBoard.at(1));
        instruments.instrument(u"SMU"_s, name.toInt(), {u"FORCE_HI"_s, u"FORCE_LO"_s}, {high, grounds.front()});
        instruments.instrument(u"DMM"_s, name.toInt(), {u"CH1"_s, u"CH2"_s}, busesOnInstrumentBoard);

        addGuard(buses);
        addTarget(buses, toSecondStage, toAdapter);
        for (std::size_t line = 0; line < 2 * linesOfEachBus; ++line)
            addBranch(buses.at(line % 2), static_cast<int>(line), toSecondStage, toAdapter);

        if (ground == Ground::Switches) {
            instruments.resistor(busesOnInstrumentBoard.at(0), grounds.front());
            adapter.relay(dutPins.front(), grounds.back());
        }
        auto pinNames = numberedTexts(u"IO"_s, static_cast<int>(dutPins.size()));
        pinNames.append(u"GND"_s);
        dutPins.append(grounds.back());
        adapter.dut(name.toInt(), pinNames, dutPins);
    }

    Query query() const { return {instrument(), u"FORCE_HI"_s, dut(), u"IO1"_s}; }
    Query queryFromGround() const { return {instrument(), u"FORCE_LO"_s, dut(), u"IO1"_s}; }
    Query queryToGround() const { return {instrument(), u"FORCE_HI"_s, dut(), u"GND"_s}; }

private:
    QMap<QString, QString> instrument() const { return instrumentProperties(name.toInt()); }
    QMap<QString, QString> dut() const { return dutProperties(name.toInt()); }

    Net busOf(Cable &toFirstStage, const QString &bus)
    {
        busesOnInstrumentBoard.append(instruments.net(u"/BUS"_s + name + bus));
        Net onCard = firstStage.net(u"/IN"_s + name + bus);
        toFirstStage.join(busesOnInstrumentBoard.last(), onCard);
        return onCard;
    }

    void addGuard(const std::array<Net, 2> &buses)
    {
        const Net guard = firstStage.net(u"/GUARD"_s + name);
        for (const Net &bus : buses)
            firstStage.relay(bus, guard);
        firstStage.instrument(u"DIGITIZER"_s, name.toInt(), {u"CH1"_s, u"CH2"_s, u"CH3"_s, u"CH4"_s},
                              {guard, guard, guard, guard});
    }

    void addTarget(const std::array<Net, 2> &buses, Cable &toSecondStage, Cable &toAdapter)
    {
        std::array<Net, 2> lines;
        for (int i = 0; i < 2; ++i) {
            const Net onFirst = firstStage.net(u"/X"_s + name + u'_' + number(i + 1));
            for (const Net &bus : buses)
                firstStage.relay(bus, onFirst);
            lines.at(static_cast<std::size_t>(i)) = secondStage.net(u"/Y"_s + name + u'_' + number(i + 1));
            toSecondStage.join(onFirst, lines.at(static_cast<std::size_t>(i)));
        }
        secondStage.instrument(u"SCOPE"_s, name.toInt(), {u"IN"_s}, {lines.at(1)});
        const Net target = secondStage.net(u"/TARGET"_s + name);
        secondStage.relay(lines.at(0), target);
        secondStage.resistor(lines.at(1), target);
        lead(target, u"/DUT"_s + name + u"_IO1"_s, toAdapter);
    }

    void addBranch(const Net &bus, int line, Cable &toSecondStage, Cable &toAdapter)
    {
        const QString suffix = name + u'_' + number(line + 3);
        const Net onFirst = firstStage.net(u"/X"_s + suffix);
        const Net onSecond = secondStage.net(u"/Y"_s + suffix);
        firstStage.relay(bus, onFirst);
        toSecondStage.join(onFirst, onSecond);
        const Net left = secondStage.net(u"/Y"_s + suffix + u"L"_s);
        const Net right = secondStage.net(u"/Y"_s + suffix + u"R"_s);
        secondStage.changeOver(onSecond, left, right);
        lead(left, u"/DUT"_s + suffix + u"L"_s, toAdapter);
        lead(right, u"/DUT"_s + suffix + u"R"_s, toAdapter);
    }

    void lead(const Net &net, const QString &nameOnAdapter, Cable &toAdapter)
    {
        dutPins.append(adapter.net(nameOnAdapter));
        toAdapter.join(net, dutPins.last());
    }

    const QString name;
    BoardBuilder &instruments;
    BoardBuilder &firstStage;
    BoardBuilder &secondStage;
    BoardBuilder &adapter;
    QList<Net> busesOnInstrumentBoard;
    QList<Net> dutPins;
};

constexpr qsizetype nodesOfTree = 144; ///< its pins on the connectors included

std::vector<std::unique_ptr<Board>> namedBoards(const QStringList &titles)
{
    std::vector<std::unique_ptr<Board>> boards;
    for (const QString &title : titles)
        boards.push_back(std::make_unique<Board>(title));
    return boards;
}

std::vector<BoardBuilder> buildersOf(const std::vector<std::unique_ptr<Board>> &boards, Properties properties)
{
    std::vector<BoardBuilder> builders;
    builders.reserve(boards.size());
    for (const auto &board : boards)
        builders.emplace_back(*board, static_cast<int>(builders.size()) + 1, properties);
    return builders;
}

/// A ground net on each board, joined over one connector.
GroundNets groundsOf(std::vector<BoardBuilder> &builders)
{
    GroundNets grounds{builders.front().net(u"GND"_s)};
    for (std::size_t i = 1; i < builders.size(); ++i) {
        grounds.push_back(builders[i].net(u"GND"_s));
        Cable(builders.front(), builders[i], u"GND"_s + number(static_cast<qsizetype>(i)))
            .join(grounds.front(), grounds.back());
    }
    return grounds;
}

QList<Net> numberedNets(BoardBuilder &board, const QString &name, int count)
{
    QList<Net> nets;
    const auto names = numberedTexts(name, count);
    for (const QString &netName : names)
        nets.append(board.net(netName));
    return nets;
}

/// Nets of another board that these are joined with.
QList<Net> continueOn(BoardBuilder &board, const QList<Net> &lines, BoardBuilder &boardBefore, const QString &name)
{
    Cable cable(boardBefore, board, name);
    auto rows = numberedNets(board, u"/"_s + name + u"_"_s, static_cast<int>(lines.size()));
    for (qsizetype i = 0; i < lines.size(); ++i)
        cable.join(lines.at(i), rows.at(i));
    return rows;
}

/// A relay at each crosspoint.
void addCrosspoints(BoardBuilder &board, const QList<Net> &rows, const QList<Net> &columns)
{
    for (const Net &row : rows) {
        for (const Net &column : columns)
            board.relay(row, column);
    }
}

/// The columns of a new matrix with a relay at each crosspoint.
QList<Net> addMatrix(BoardBuilder &board, const QList<Net> &rows, int columnCount, const QString &name)
{
    auto columns = numberedNets(board, u"/"_s + name + u"_COLUMN"_s, columnCount);
    addCrosspoints(board, rows, columns);
    return columns;
}

constexpr int matrixBoards = 6;

std::vector<std::unique_ptr<Board>> boardsForMatrices()
{
    QStringList titles = numberedTexts(u"matrix "_s, matrixBoards);
    titles.prepend(u"instruments"_s);
    titles.append(u"adapter"_s);
    return namedBoards(titles);
}

void addCascade(std::vector<BoardBuilder> &builders, const std::vector<int> &lines, int copy)
{
    const QStringList pinNames{u"1"_s, u"2"_s};
    const auto name = [copy](const char16_t *what, int place) {
        return QString::fromUtf16(what) + number(copy) + u'.' + number(place);
    };
    BoardBuilder *board = &builders.front();
    QList<Net> lastLines = numberedNets(*board, u"/SOURCE"_s + number(copy) + u"_"_s, lines.front());
    board->instrument(u"SMU"_s, copy, pinNames, lastLines.first(2));
    const int matrices = static_cast<int>(lines.size()) - 1;
    for (int matrix = 1; matrix <= matrices; ++matrix) {
        auto &next = builders[static_cast<std::size_t>(1 + (copy * matrices + matrix) % matrixBoards)];
        const auto rows = continueOn(next, lastLines, *board, name(u"C", matrix));
        lastLines = addMatrix(next, rows, lines[static_cast<std::size_t>(matrix)], name(u"M", matrix));
        board = &next;
    }
    builders.back().dut(copy, pinNames, continueOn(builders.back(), lastLines, *board, name(u"D", 1)).first(2));
}

constexpr int groupsOfBus = 4;

// The numbers of instruments and DUTs go on from one bus to the next.
void addGroups(std::vector<BoardBuilder> &builders, int lines, int copy)
{
    BoardBuilder &instruments = builders.front();
    BoardBuilder &matrixBoard = builders[static_cast<std::size_t>(1 + copy % matrixBoards)];
    const QString name = number(copy);
    const auto bus = numberedNets(matrixBoard, u"/BUS"_s + name + u"_"_s, lines);
    for (int line = 0; line < lines; ++line) {
        matrixBoard.instrument(u"SCOPE"_s, copy * lines + line + 1, numberedTexts(u"CH"_s, 4),
                               QList<Net>(4, bus.at(line)));
    }
    for (int group = 0; group < groupsOfBus; ++group) {
        const QString groupName = name + u'.' + number(group);
        const int firstNumber = (copy * groupsOfBus + group) * lines + 1;
        const auto sources = numberedNets(instruments, u"/SOURCE"_s + groupName + u"_"_s, lines);
        const auto inputs = continueOn(matrixBoard, sources, instruments, u"S"_s + groupName);
        const auto rows = numberedNets(matrixBoard, u"/ROW"_s + groupName + u"_"_s, lines);
        for (int line = 0; line < lines; ++line) {
            instruments.instrument(u"SMU"_s, firstNumber + line, {u"HI"_s}, {sources.at(line)});
            matrixBoard.resistor(inputs.at(line), rows.at(line));
            matrixBoard.relay(rows.at(line), bus.at(line));
        }
        const auto columns = addMatrix(matrixBoard, rows, lines, u"G"_s + groupName);
        builders.back().dut(copy * groupsOfBus + group + 1, numberedTexts(u"IO"_s, lines),
                            continueOn(builders.back(), columns, matrixBoard, u"D"_s + groupName));
    }
}
}

namespace {

/// One board with an instrument and a DUT of as many pins, numbered from 1 on, and what lies between their nets.
Workload pinsToPins(int pins,
                    const std::function<void(BoardBuilder &, const QList<Net> &, const QList<Net> &)> &addBetween)
{
    Workload system;
    system.boards = namedBoards({u"matrix"_s});
    BoardBuilder builder(*system.boards.front(), 1, Properties::AsExported);
    const auto sources = numberedNets(builder, u"/SOURCE"_s, pins);
    const auto duts = numberedNets(builder, u"/DUT"_s, pins);
    builder.instrument(u"SMU"_s, 1, numberedTexts(u"CH"_s, pins), sources);
    builder.dut(1, numberedTexts(u"IO"_s, pins), duts);
    addBetween(builder, sources, duts);
    return system;
}

/// The lines, each of another group of so many.
QList<QList<Net>> inGroups(const QList<Net> &lines, int groupSize)
{
    QList<QList<Net>> groups;
    for (qsizetype first = 0; first < lines.size(); first += groupSize)
        groups.append(lines.sliced(first, groupSize));
    return groups;
}

/// Every input on the way to any output. Without stages a matrix; else one for each group of inputs and of outputs, and
/// as many networks of the further stages between them as the first stage says, each with a line to each group.
void addNetwork(BoardBuilder &board, const QList<Net> &inputs, const QList<Net> &outputs,
                const std::vector<SwitchStage> &stages, const QString &name)
{
    if (stages.empty()) {
        addCrosspoints(board, inputs, outputs);
        return;
    }
    const SwitchStage &outer = stages.front();
    const auto inputGroups = inGroups(inputs, outer.groupSize);
    const auto outputGroups = inGroups(outputs, outer.groupSize);
    for (int middle = 1; middle <= outer.middleNetworks; ++middle) {
        const QString middleName = name + u'_' + number(middle);
        const auto ins = numberedNets(board, middleName + u"_IN"_s, static_cast<int>(inputGroups.size()));
        const auto outs = numberedNets(board, middleName + u"_OUT"_s, static_cast<int>(outputGroups.size()));
        for (qsizetype i = 0; i < inputGroups.size(); ++i)
            addCrosspoints(board, inputGroups.at(i), {ins.at(i)});
        for (qsizetype i = 0; i < outputGroups.size(); ++i)
            addCrosspoints(board, {outs.at(i)}, outputGroups.at(i));
        addNetwork(board, ins, outs, {stages.begin() + 1, stages.end()}, middleName);
    }
}
}

QList<EDAProvider *> Workload::providers() const
{
    QList<EDAProvider *> result;
    for (const auto &board : boards)
        result.append(board.get());
    return result;
}

qsizetype Workload::nodeCount() const
{
    qsizetype count = 0;
    for (const auto &board : boards) {
        for (const auto &net : std::as_const(board->nets))
            count += net->nodes.size();
    }
    return count;
}

Workload sparseSystem(qsizetype nodes, Properties properties, Ground ground)
{
    Workload system;
    system.routeCount = 8;
    system.boards = namedBoards({u"instruments"_s, u"first stage 1"_s, u"first stage 2"_s, u"first stage 3"_s,
                                 u"second stage 1"_s, u"second stage 2"_s, u"second stage 3"_s, u"adapter"_s});
    auto builders = buildersOf(system.boards, properties);
    const GroundNets grounds = groundsOf(builders);
    auto &instruments = builders.front();
    auto &adapter = builders.back();
    std::vector<Cable> toFirst;
    std::vector<Cable> toSecond;
    std::vector<Cable> toAdapter;
    for (std::size_t card = 1; card <= cardsPerStage; ++card) {
        const QString cardName = number(static_cast<qsizetype>(card));
        toFirst.emplace_back(instruments, builders[card], u"F"_s + cardName);
        toSecond.emplace_back(builders[card], builders[card + cardsPerStage], u"S"_s + cardName);
        toAdapter.emplace_back(builders[card + cardsPerStage], adapter, u"A"_s + cardName);
    }
    const qsizetype trees = std::max<qsizetype>(2, nodes / nodesOfTree);
    for (qsizetype i = 0; i < trees; ++i) {
        const auto card = static_cast<std::size_t>(i % cardsPerStage);
        MultiplexerTree tree(i + 1, instruments, builders[card + 1], builders[card + 1 + cardsPerStage], adapter);
        tree.build(ground, grounds, toFirst[card], toSecond[card], toAdapter[card]);
        system.queries.push_back(tree.query());
        if (i == trees / 2 && ground == Ground::Interfaces) {
            system.queriesWithoutRoute["from-ground"] = tree.queryFromGround();
            system.queriesWithoutRoute["to-ground"] = tree.queryToGround();
        }
    }
    const Query &first = system.queries.front();
    const Query &last = system.queries.back();
    system.queriesWithoutRoute["other-dut"] = {first.source, first.sourcePin, last.destination, last.destinationPin};
    return system;
}

Workload crosspointCascade(const std::vector<int> &lines, int copies, int maxSwitches, qsizetype routeCount)
{
    Workload system;
    system.maxSwitches = maxSwitches;
    system.routeCount = routeCount;
    system.boards = boardsForMatrices();
    auto builders = buildersOf(system.boards, Properties::AsExported);
    for (int copy = 1; copy <= copies; ++copy) {
        addCascade(builders, lines, copy);
        for (const QString &pin : {u"1"_s, u"2"_s})
            system.queries.push_back({instrumentProperties(copy), pin, dutProperties(copy), pin});
    }
    return system;
}

Workload crosspointGroups(int lines, int copies, qsizetype routeCount)
{
    Workload system;
    system.routeCount = routeCount;
    system.boards = boardsForMatrices();
    auto builders = buildersOf(system.boards, Properties::AsExported);
    for (int copy = 0; copy < copies; ++copy) {
        addGroups(builders, lines, copy);
        for (int group = 0; group < groupsOfBus; ++group) {
            const int place = copy * groupsOfBus + group;
            system.queries.push_back(
                {instrumentProperties(place * lines + 1), u"HI"_s, dutProperties(place + 1), u"IO1"_s});
        }
    }
    return system;
}

Workload crosspointMatrix(int lines)
{
    return pinsToPins(lines, addCrosspoints);
}

Workload sharedLines(int lines, int pins)
{
    return pinsToPins(pins, [lines](BoardBuilder &board, const QList<Net> &sources, const QList<Net> &duts) {
        const auto shared = numberedNets(board, u"/LINE"_s, lines);
        addCrosspoints(board, sources, shared);
        addCrosspoints(board, shared, duts);
    });
}

Workload switchedNetwork(int lines, const std::vector<SwitchStage> &stages)
{
    return pinsToPins(lines, [&stages](BoardBuilder &board, const QList<Net> &sources, const QList<Net> &duts) {
        addNetwork(board, sources, duts, stages, u"/LINE"_s);
    });
}

std::vector<std::string> exportedNetlists()
{
    std::vector<std::string> files;
    for (const char *name :
         {"instruments", "backplane", "matrix1", "matrix2", "matrix3", "matrix4", "matrix5", "adapter"})
        files.push_back(std::string(VELK_BENCHMARK_NETLISTS) + '/' + name + ".net");
    return files;
}

namespace {

std::unique_ptr<Board> boardFromFile(const std::string &name)
{
    QFile file(QString::fromStdString(name));
    KiCadReader reader(&file);
    if (reader.read() != KiCadNoError)
        throw std::runtime_error("cannot read " + name);
    KiCadNetParser parser(reader.getRoot());
    parser.parse();
    auto board = std::make_unique<Board>(file.fileName());
    board->nets = parser.getNets();
    const auto parts = parser.getParts();
    for (const auto &part : parts)
        board->addPart(part);
    const auto components = parser.getComponents();
    for (const auto &component : components)
        board->addComponent(component);
    return board;
}
}

Workload demoSystem()
{
    Workload system;
    for (const char *name : {"instruments", "matrix", "adapter"})
        system.boards.push_back(boardFromFile(std::string(VELK_BENCHMARK_DEMO) + '/' + name + ".net"));
    return system;
}

Workload exportedSystem()
{
    Workload system;
    system.routeCount = 346;
    for (const auto &name : exportedNetlists())
        system.boards.push_back(boardFromFile(name));
    system.queries.push_back({{{EDAComponent::DEVICE, u"SMU"_s}, {EDAComponent::DEVICE_NUMBER, u"1"_s}},
                              u"FORCE_HI"_s,
                              {{EDAComponent::TYPE, u"DUT"_s}, {EDAComponent::BENCH, u"1"_s}},
                              u"VCC"_s});
    return system;
}
}
