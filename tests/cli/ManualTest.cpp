#include "cli/CommandLine.h"
#include "cli/manual/Completions.h"
#include "cli/manual/ManualPage.h"
#include "tests/support/TestRegistry.h"
#include "tests/support/TextTable.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace VelkCli;

class ManualTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void descriptionsAreEscaped_data() { addRowsFrom("page_texts.txt", {"description", "manual", "zsh", "fish"}); }
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
        const QString zsh = zshCompletion(command).section(u"'--flag["_s, 1);
        QTEST(zsh.section(u"]' \\\n"_s, 0, 0).section(u"]'\n"_s, 0, 0), "zsh");
        const QString fish = fishCompletion(command).section(u"-l flag -d '"_s, 1);
        QTEST(fish.section(u"'\n"_s, 0, 0).replace(u'\n', u'¶'), "fish");
    }

    void holdTheOptions_data() { addCasesFrom("page_excerpts.txt"); }
    void holdTheOptions()
    {
        QFETCH(QString, input);
        QFETCH(QString, expected);
        const auto command = describe(CommandLine().definitions());
        const QMap<QString, QString> files{{u"velk.1"_s, manualPage(command)},
                                           {u"velk.bash"_s, bashCompletion(command)},
                                           {u"velk.zsh"_s, zshCompletion(command)},
                                           {u"velk.fish"_s, fishCompletion(command)}};
        QVERIFY2(files.value(input).contains(expected), qPrintable(files.value(input)));
    }
};

VELK_TEST(ManualTest)

#include "ManualTest.moc"
