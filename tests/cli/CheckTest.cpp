#include "cli/check/ConnectorChecks.h"
#include "tests/support/Command.h"
#include "tests/support/StubProvider.h"
#include "tests/support/TestRegistry.h"
#include "tests/support/TextTable.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <random>

using namespace Qt::StringLiterals;
using namespace Velk;
using namespace VelkCli;

namespace {

QStringList words(const QString &text)
{
    return text.split(u' ', Qt::SkipEmptyParts);
}

QString element(const QString &name, const QString &value)
{
    return u"(%1 \"%2\")"_s.arg(name, value);
}

/// "1=HI 2": components with the same pins have the same part.
QString libpart(const QString &pins)
{
    QString result;
    for (const QString &pin : words(pins))
        result += u"(pin %1 %2 (type \"\"))"_s.arg(element(u"num"_s, pin.section(u'=', 0, 0)),
                                                   element(u"name"_s, pin.section(u'=', 1)));
    return u"(libpart %1 (pins %2))"_s.arg(element(u"part"_s, pins), result);
}

/// "K1 [1 2] CompType=Relay, Group=A", with "~" for a blank in the properties.
QString component(const QString &line)
{
    QString result = element(u"ref"_s, line.section(u' ', 0, 0)) + element(u"value"_s, {}) +
                     u"(libsource %1)"_s.arg(element(u"part"_s, line.section(u'[', 1).section(u']', 0, 0)));
    for (QString property : line.section(u"] "_s, 1).split(u", "_s, Qt::SkipEmptyParts)) {
        property.replace(u'~', u' ');
        result += u"(property %1 %2)"_s.arg(element(u"name"_s, property.section(u'=', 0, 0)),
                                            element(u"value"_s, property.section(u'=', 1)));
    }
    return u"(comp %1)"_s.arg(result);
}

/// "A: K1/1 K2/1".
QString net(const QString &line)
{
    QString result = element(u"name"_s, line.section(u": "_s, 0, 0));
    for (const QString &node : words(line.section(u": "_s, 1)))
        result += u"(node %1 %2)"_s.arg(element(u"ref"_s, node.section(u'/', 0, 0)),
                                        element(u"pin"_s, node.section(u'/', 1)));
    return u"(net %1)"_s.arg(result);
}

/// A line for each component and each net.
QString netlist(const QString &board)
{
    QString components;
    QString parts;
    QString nets;
    for (const QString &line : board.split(u'\n', Qt::SkipEmptyParts)) {
        if (!line.contains(u'[')) {
            nets += net(line);
            continue;
        }
        components += component(line);
        parts += libpart(line.section(u'[', 1).section(u']', 0, 0));
    }
    return u"(export (components %1) (libparts %2) (nets %3))"_s.arg(components, parts, nets);
}

/// What velk check says of the boards, which "--" separates; options stand in a line "velk OPTIONS".
Result check(const QString &input, const QString &format)
{
    const QTemporaryDir folder;
    QStringList arguments{u"check"_s, u"--format"_s, format};
    int number = 0;
    for (QString board : input.split(u"\n--\n"_s)) {
        if (board.startsWith(u"velk "_s)) {
            arguments += words(board.section(u'\n', 0, 0)).mid(1);
            board = board.section(u'\n', 1);
        }
        arguments.append(folder.filePath(u"%1.net"_s.arg(++number)));
        write(arguments.last(), netlist(board));
    }
    Result result = run(QStringLiteral(VELK_COMMAND), arguments);
    result.output.replace(folder.path() + u'/', QString());
    return result;
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

QJsonArray findingsOf(const Result &result)
{
    return QJsonDocument::fromJson(result.output.toUtf8())[u"findings"_s].toArray();
}
}

class CheckTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void finds_data() { addCasesFrom("check_cases.txt"); }
    void finds()
    {
        QFETCH(QString, input);
        QFETCH(QString, expected);
        const Result result = check(input, u"json"_s);
        QCOMPARE(result.errors, QString());
        QCOMPARE(result.status, expected.isEmpty() ? 0 : 1);
        QStringList lines;
        for (const auto &finding : findingsOf(result))
            lines.append(u"%1: %2"_s.arg(finding[u"code"_s].toString(), finding[u"message"_s].toString()));
        QCOMPARE(lines.join(u'\n'), expected);
    }

    void everyCodeIsProvoked()
    {
        for (const auto &name : findingNames())
            QVERIFY2(textOf("check_cases.txt").contains(u"\n%1: "_s.arg(QString::fromStdString(name))), name.c_str());
    }

    void everyCodeIsExplained()
    {
        const QString page = read(QStringLiteral(VELK_SOURCE_DIR "/docs/check.md"));
        for (const auto &name : findingNames())
            QVERIFY2(page.contains(u"\n## %1\n"_s.arg(QString::fromStdString(name))), name.c_str());
        QCOMPARE(page.count(u"\n## "_s), findingNames().size());
    }

    void tellsWheneverTooMuchIsJoined()
    {
        int unwanted = 0;
        for (unsigned seed = 0; seed < 1000; ++seed) {
            std::mt19937 random(seed);
            auto first = randomBoard(random);
            auto second = randomBoard(random);
            const MultipleEDAProvider unjoined({&first, &second}, {});
            const auto findings = connectorFindings(CheckedSystem(unjoined, 2, {{u"connector"_s}, {}, {}, {}}));
            const bool isTold = std::any_of(findings.cbegin(), findings.cend(), [](const Finding &finding) {
                return finding.code == FindingCode::JoinedByEmptyIdentifier ||
                       finding.message.contains(u"so nets join"_s);
            });
            auto firstAsMeant = asMeant(first, 1);
            auto secondAsMeant = asMeant(second, 2);
            const bool isJoinedTooMuch = netCount(first, second) < netCount(firstAsMeant, secondAsMeant);
            QVERIFY2(isTold == isJoinedTooMuch, qPrintable(u"seed %1"_s.arg(seed)));
            unwanted += isJoinedTooMuch ? 1 : 0;
        }
        QVERIFY(unwanted > 100 && unwanted < 900);
    }

    void asJson()
    {
        const auto findings =
            findingsOf(check(u"A: X1/1\nX1 [1] CompType=Connector\n--\nB: K1/1\nK1 [1 2] CompType=Relay"_s, u"json"_s));
        QCOMPARE(findings.size(), 3);
        const auto join = findings.at(0).toObject();
        QCOMPARE(join.keys(),
                 (QStringList{u"advice"_s, u"code"_s, u"components"_s, u"message"_s, u"netlists"_s, u"nets"_s}));
        QCOMPARE(join[u"components"_s], QJsonArray({u"X1#1"_s, u"K1#2"_s}));
        QCOMPARE(join[u"nets"_s], QJsonArray({u"A#1"_s, u"B#2"_s}));
        QCOMPARE(join[u"netlists"_s], QJsonArray({u"1.net"_s, u"2.net"_s}));
        QCOMPARE(findings.at(2)[u"netlists"_s], QJsonArray({u"2.net"_s}));
        QVERIFY(!findings.at(2)[u"advice"_s].toString().isEmpty());
    }

    void asText()
    {
        QString board = u"velk --ignore bench-without-dut\nA: R1/1\nR1 [1] Note=x"_s;
        for (int i = 11; i <= 22; ++i)
            board += u"\nU%1 [1] CompType=Source, Dev=D, DevNo=%1"_s.arg(i);
        const QString complete = board;
        board.replace(u"Dev=D, "_s, QString());
        const Result result = check(board, u"text"_s);
        QCOMPARE(result.status, 1);
        QString expected = u"no-type: 1 finding\n  R1#1: no CompType (part '1#1')\n"
                           "  > Give the component a CompType; no route passes through it, and it is no source, DUT "
                           "or connector.\n\nsource-without-device: 12 findings\n"_s;
        for (int i = 11; i <= 20; ++i)
            expected += u"  U%1#1: has no Dev, which stays empty in its entries\n"_s.arg(i);
        const QString end = u"  > Give the source Dev and DevNo; they name its signals in the application INI.\n\n"
                            "13 findings in 1 netlist, 13 components\n"_s;
        QCOMPARE(result.output, expected + u"  and 2 more; --all shows them\n"_s + end);

        const QString all = check(QString(board).replace(u"velk "_s, u"velk --all "_s), u"text"_s).output;
        QVERIFY(all.contains(u"  U22#1: has no Dev, which stays empty in its entries\n"_s + end));
        QCOMPARE(check(complete, u"text"_s).output.section(u"\n\n"_s, 1), u"1 finding in 1 netlist, 13 components\n"_s);
    }

    void namesCannotSteerTheTerminal()
    {
        QVERIFY(check(u"A: R\x1b/1\nR\x1b [1] X=y"_s, u"text"_s).output.contains(u"  R\\x1B#1: no CompType"_s));
    }

    void exampleSystems()
    {
        QCOMPARE(velk(QStringList{u"check"_s} + demo).output, u"0 findings in 3 netlists, 64 components\n"_s);
        QCOMPARE(velk(QStringList{u"check"_s} + demo.first(2)).output.section(u'\n', 0, 1),
                 u"identifier-once: 1 finding\n  X2#2: no other component has its Identifier 'X2'"_s);
        const Result unannotated = velk({u"check"_s, u"tests/data/quirks/unannotated.net"_s});
        QVERIFY(unannotated.output.contains(u"R?#1: several nets hold its pins '1', '2': /A#1, /B#1, /C#1\n"_s));
    }

    void netlistsGivenTwice()
    {
        const QString matrix = demo.at(1);
        const Result result = velk(QStringList{u"check"_s, u"--format"_s, u"json"_s} + demo.first(2) +
                                   QStringList{u"./"_s + matrix, demo.at(2)});
        QCOMPARE(findingsOf(result).size(), 1);
        const auto finding = findingsOf(result).at(0).toObject();
        QCOMPARE(finding[u"message"_s], u"%1, ./%1: the same netlist given as #2, #3"_s.arg(matrix));
        QCOMPARE(finding[u"netlists"_s], QJsonArray({matrix, u"./"_s + matrix}));
    }

    void typesMayBeEmpty()
    {
        QCOMPARE(velk(QStringList{u"check"_s, u"--interface"_s, QString()} + demo).output,
                 u"0 findings in 3 netlists, 64 components\n"_s);
    }

    void refuses()
    {
        const Result result = velk({u"check"_s, u"--ignore"_s, u"no-typ"_s, demo.at(0)});
        QCOMPARE(result.status, 2);
        QVERIFY(result.errors.startsWith(u"velk: --ignore: no-typ not in {same-netlist-twice,"_s));
    }
};

VELK_TEST(CheckTest)

#include "CheckTest.moc"
