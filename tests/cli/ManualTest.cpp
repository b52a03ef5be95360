#include "cli/CommandLine.h"
#include "cli/commands/Completion.h"
#include "cli/commands/SystemNames.h"
#include "cli/manual/ManualPage.h"
#include "tests/support/Command.h"
#include "tests/support/TestRegistry.h"
#include "tests/support/TextTable.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace VelkCli;

class ManualTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void descriptionsAreEscaped_data() { addRowsFrom("page_texts.txt", {"description", "manual"}); }
    void descriptionsAreEscaped()
    {
        QFETCH(QString, description);
        ArgumentDescription flag;
        flag.names = {u"--flag"_s};
        flag.description = description.replace(u'¶', u'\n');
        CommandDescription subcommand;
        subcommand.path = u"velk do"_s;
        subcommand.name = u"do"_s;
        subcommand.options = {flag};
        CommandDescription command;
        command.path = command.name = u"velk"_s;
        command.description = u"Does."_s;
        command.subcommands = {subcommand};

        const QString manual = manualPage(command).section(u"\\-\\-flag\\fR\n"_s, 1);
        QTEST(manual.section(u"\n."_s, 0, 0).replace(u'\n', u'¶'), "manual");
    }

    void holdsTheOptions_data() { addCasesFrom("page_excerpts.txt"); }
    void holdsTheOptions()
    {
        QFETCH(QString, expected);
        const QString page = manualPage(describe(CommandLine().definitions()));
        QVERIFY2(page.contains(expected), qPrintable(page));
    }

    void completesTheLastWord_data() { addRowsFrom("completions.txt", {"words", "expected"}); }
    void completesTheLastWord()
    {
        QFETCH(QString, words);
        words.replace(u"DEMO"_s, QStringLiteral(VELK_SOURCE_DIR "/examples/demo"));
        QStringList given = words.split(u' ');
        if (given.last() == u"_"_s)
            given.last().clear();
        auto lines = completions(describe(CommandLine().definitions()), given, namesInSystem);
        for (QString &line : lines)
            line = line.startsWith(u'\t') ? u'<' + line.mid(1) + u'>' : line.section(u'\t', 0, 0);
        QFETCH(QString, expected);
        QCOMPARE(lines.join(u' '), commandsBuilt(expected));
    }
};

VELK_TEST(ManualTest)

#include "ManualTest.moc"
