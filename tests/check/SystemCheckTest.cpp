#include "tests/support/Boards.h"
#include "tests/support/RandomSystems.h"
#include "tests/support/TestRegistry.h"
#include "tests/support/TextTable.h"

#include <velk/check/SystemCheck.h>
#include <velk/kicad/KiCadNetlistFile.h>

#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <random>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace {

/// The options of a case, as the command has them: "velk --connector Plug --ignore no-type".
QMap<QString, QStringList> optionsOf(const QString &line)
{
    QMap<QString, QStringList> options;
    const QStringList words = line.split(u' ').mid(1);
    for (qsizetype i = 0; i < words.size(); i += 2)
        options[words.at(i)].append(words.value(i + 1));
    return options;
}

/// What is found in the boards, before which a line of options may stand, and which texts leave out nothing.
QStringList findingsIn(QString boards)
{
    QMap<QString, QStringList> options;
    if (boards.startsWith(u"velk "_s)) {
        options = optionsOf(boards.section(u'\n', 0, 0));
        boards = boards.section(u'\n', 1);
    }
    const auto mode = options.contains(u"--tolerant"_s) ? KiCadReadingMode::Tolerant : KiCadReadingMode::Default;
    const QTemporaryDir folder;
    const QStringList files = writeBoards(boards, folder.path());
    QList<KiCadNetlistFile> netlists;
    QList<EDAProvider *> providers;
    for (const QString &name : files) {
        netlists.append(KiCadNetlistFile(name, mode));
        providers.append(netlists.last().netlist().get());
    }
    const MultipleEDAProvider system(providers, options.value(u"--connector"_s, {u"Connector"_s}));
    SystemCheck check(system);
    for (const auto &netlist : std::as_const(netlists))
        check.addFile(netlist.fileName(), netlist.repetitions());
    if (options.contains(u"--switchable"_s))
        check.setComponentTypesThatAreSwitchable(options[u"--switchable"_s]);
    if (options.contains(u"--passive"_s))
        check.setComponentTypesThatArePassive(options[u"--passive"_s]);
    if (options.contains(u"--dut-type"_s))
        check.setComponentTypesDut(options[u"--dut-type"_s]);
    check.setIgnored(options[u"--ignore"_s]);
    QStringList lines;
    const auto findings = check.findings(&lines);
    for (const Finding &finding : findings)
        lines.append(u"%1: %2"_s.arg(finding.name(), finding.message()));
    return lines.replaceInStrings(folder.path() + u'/', QString());
}

/// A few connectors and relays with Identifiers or without, their pins on a few nets.
StubProvider randomBoard(std::mt19937 &random)
{
    StubProvider board;
    QMap<QString, QStringList> nodes;
    for (int i = 0; i < 3; ++i) {
        const QString ref = u'C' + QString::number(i);
        const QString identifiers[] = {{}, u"A"_s, u"B"_s, u"C"_s};
        board.add(ref, random() % 2 ? u"Connector"_s : u"Relay"_s, {u"1"_s, u"2"_s}, identifiers[random() % 4]);
        for (const QString &pin : {u"/1"_s, u"/2"_s})
            nodes[u'N' + QString::number(random() % 6)].append(ref + pin);
    }
    for (auto it = nodes.cbegin(); it != nodes.cend(); ++it)
        board.connect(it.key(), it.value());
    return board;
}

/// The board with an Identifier for every connector and none for the rest.
StubProvider asMeant(const StubProvider &board, int number)
{
    StubProvider result = board;
    for (auto &component : result.components) {
        component = component->clone();
        if (component->type() != u"Connector"_s)
            component->properties.remove(EDAComponent::IDENTIFER);
        else if (component->identifier().isEmpty())
            component->properties[EDAComponent::IDENTIFER] = u"%1 of %2"_s.arg(component->ref).arg(number);
    }
    return result;
}

qsizetype netCount(StubProvider &first, StubProvider &second)
{
    return MultipleEDAProvider({&first, &second}, {u"Connector"_s}).getNets().size();
}
}

class SystemCheckTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void finds_data() { addCasesFrom("check_cases.txt"); }
    void finds()
    {
        QFETCH(QString, input);
        QFETCH(QString, expected);
        QCOMPARE(findingsIn(input).join(u'\n'), expected);
    }

    void everyCodeIsProvokedAndExplained()
    {
        const QString page = read(QStringLiteral(VELK_SOURCE_DIR "/docs/check.md"));
        for (const QString &name : Finding::names()) {
            QVERIFY2(textOf("check_cases.txt").contains(u"\n%1: "_s.arg(name)), qPrintable(name));
            QVERIFY2(page.contains(u"\n## %1\n"_s.arg(name)), qPrintable(name));
        }
        QCOMPARE(page.count(u"\n## "_s), Finding::names().size());
    }

    void tellsWheneverTooMuchIsJoined()
    {
        int unwanted = 0;
        for (unsigned seed = 0; seed < 1000; ++seed) {
            std::mt19937 random(seed);
            auto first = randomBoard(random);
            auto second = randomBoard(random);
            const MultipleEDAProvider joined({&first, &second}, {u"connector"_s});
            const auto findings = SystemCheck(joined).findings();
            const bool isTold = std::any_of(findings.cbegin(), findings.cend(), [](const Finding &finding) {
                return finding.code == FindingCode::JoinedByEmptyIdentifier || finding.text.contains(u"so nets join"_s);
            });
            auto firstAsMeant = asMeant(first, 1);
            auto secondAsMeant = asMeant(second, 2);
            const bool isJoinedTooMuch = netCount(first, second) < netCount(firstAsMeant, secondAsMeant);
            QVERIFY2(isTold == isJoinedTooMuch, qPrintable(u"seed %1"_s.arg(seed)));
            unwanted += isJoinedTooMuch ? 1 : 0;
        }
        QVERIFY(unwanted > 100 && unwanted < 900);
    }

    void tellsWhatItWasTold()
    {
        const MultipleEDAProvider system({}, {});
        SystemCheck check(system);
        QCOMPARE(check.componentTypesThatAreSwitchable(), (QStringList{u"Relay"_s, u"Resistor"_s}));
        QCOMPARE(check.componentTypesDut(), QStringList{u"Dut"_s});
        QCOMPARE(check.componentTypesThatArePassive(), QStringList{u"Resistor"_s});
        SystemCheck copy = check;
        copy.setComponentTypesThatAreInterfaces({u"Load"_s});
        QCOMPARE(copy.componentTypesThatAreInterfaces(), QStringList{u"Load"_s});
        QCOMPARE(check.componentTypesThatAreInterfaces(), (QStringList{u"Source"_s, u"DUT"_s}));
        check.setIgnored({u"no-type"_s});
        QCOMPARE(check.ignored(), QStringList{u"no-type"_s});
        QVERIFY(check.findings().isEmpty());
    }

    void takesPositionsFromTables()
    {
        const auto board =
            systemOf(u"K1 Relay 1,2,Coil\nR1 Resistor 1,2,3\nA: K1/1 R1/1\nB: K1/2 R1/2\nC: K1/Coil R1/3"_s);
        const MultipleEDAProvider system({board.get()}, {});
        SystemCheck check(system);
        QCOMPARE(check.findings().value(0, {FindingCode::NoType, {}, {}}).name(), u"coil-crossed"_s);
        check.setRelayTables({RelayTable(CsvTable("part,positions\n*,1-2 / 1-Coil", u"relays.csv"_s))});
        QVERIFY(check.findings().isEmpty());
        check.setRelayTables({RelayTable(CsvTable("part,positions\n*,1-4 /", u"relays.csv"_s))});
        QCOMPARE(check.relayTables().size(), 1);
        const auto findings = check.findings();
        QCOMPARE(findings.size(), 1);
        QCOMPARE(findings[0].name(), u"positions-wrong"_s);
        QCOMPARE(findings[0].message(), u"K1#1: relays.csv:2, column 1 of '1-4 /': the part has no pin '4'"_s);
    }

    void takesNetlistsThatLackParts()
    {
        const auto board = systemOf(u"X1 Connector 1 X1\nK1 Relay 1,2\nK2 Relay 1\nA: X1/1 K1/1 K2/1 K9/1"_s);
        board->parts.removeFirst();
        board->parts.removeLast();
        const MultipleEDAProvider system({board.get(), board.get()}, {u"Connector"_s});
        const auto findings = SystemCheck(system).findings();
        QCOMPARE(findings.size(), 2);
        const Finding &finding = findings.last();
        QCOMPARE(finding.message(), u"K1#2: no net at pin '2'"_s);
        QCOMPARE(finding.components, QStringList{u"K1#2"_s});
        QCOMPARE(finding.pins, QStringList{u"2"_s});
        QCOMPARE(finding.netlists, QList<int>{2});
    }
};

VELK_TEST(SystemCheckTest)

#include "SystemCheckTest.moc"
