#include "tests/support/Command.h"
#include "tests/support/TestRegistry.h"
#include "tests/support/TextTable.h"

#include <QTest>

using namespace Qt::StringLiterals;

class CommandLineTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void refuses_data() { addRowsFrom("command_failures.txt", {"arguments", "expected"}); }
    void refuses()
    {
        QFETCH(QString, arguments);
        QFETCH(QString, expected);
        arguments.replace(u"QUERY"_s, u"routes --source Dev=PSU --dut Bench=1 --dut-pin SENSE+ --source-pin"_s);
        arguments.replace(u"DEMO"_s, demo.join(u' '));
        const Result result = velk(argumentsOf(arguments));
        QCOMPARE(result.status, 2);
        QCOMPARE(result.output, QString());
        QVERIFY2(result.errors.startsWith(u"velk: "_s) && result.errors.contains(commandsBuilt(expected)),
                 qPrintable(result.errors));
        QCOMPARE(result.errors.count(u'\n'), 1);
    }

    void helpAndVersion()
    {
        for (const QStringList &command : {QStringList(),
                                           {u"routes"_s},
                                           {u"list"_s},
                                           {u"check"_s},
#ifdef VELK_HAS_PLANNING
                                           {u"plan"_s},
#endif
                                           {u"ini"_s},
                                           {u"ini"_s, u"physical"_s},
                                           {u"ini"_s, u"application"_s}}) {
            const Result result = velk(command + QStringList{u"--help"_s});
            QCOMPARE(result.status, 0);
            QCOMPARE(result.errors, QString());
            // The example works as it stands.
            QString example = result.output.section(u"  velk "_s, 1).section(u"\n\n"_s, 0, 0);
            const Result run = velk(example.remove(u'\\').simplified().split(u' '));
            QCOMPARE(run.status, 0);
            QVERIFY(!run.output.isEmpty());
            QCOMPARE(velk(QStringList{u"help"_s} + command).output, result.output);
        }
        QCOMPARE(velk({}).output, velk({u"--help"_s}).output);
        QVERIFY(velk({u"--version"_s}).output.startsWith(u"velk "_s));
    }
};

VELK_TEST(CommandLineTest)

#include "CommandLineTest.moc"
