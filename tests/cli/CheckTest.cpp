#include "tests/support/Boards.h"
#include "tests/support/Command.h"
#include "tests/support/StubProvider.h"
#include "tests/support/TestRegistry.h"
#include "tests/support/TextTable.h"
#include "velk/check/ConnectorChecks.h"

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

/// What velk check says of the boards, before which a line "velk OPTIONS" may stand.
Result check(QString boards, const QString &format)
{
    const QTemporaryDir folder;
    QStringList arguments{u"check"_s, u"--format"_s, format};
    if (boards.startsWith(u"velk "_s)) {
        arguments += boards.section(u'\n', 0, 0).split(u' ').mid(1);
        boards = boards.section(u'\n', 1);
    }
    arguments += writeBoards(boards, folder.path());
    Result result = run(QStringLiteral(VELK_COMMAND), arguments);
    for (QString *text : {&result.output, &result.errors})
        text->replace(folder.path() + u'/', QString());
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
        QStringList lines = result.errors.split(u'\n', Qt::SkipEmptyParts);
        const auto findings = findingsOf(result);
        QCOMPARE(result.status, findings.isEmpty() ? 0 : 1);
        for (const auto &finding : findings)
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
};

VELK_TEST(CheckTest)

#include "CheckTest.moc"
