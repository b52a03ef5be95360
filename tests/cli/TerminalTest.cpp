#include "tests/support/Command.h"
#include "tests/support/TestRegistry.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// The command is $0, the boards are $@.
Result shell(const QString &script, const QStringList &boards)
{
    return run(u"sh"_s, QStringList{u"-c"_s, script, QStringLiteral(VELK_COMMAND)} + boards);
}

/// What the command shows on a terminal that knows colours, where neither end of the output is left out.
QString onTerminal(const QString &arguments, const QString &noColor = QString())
{
    return run(u"env"_s, {u"TERM=xterm"_s, u"NO_COLOR="_s + noColor, QStringLiteral("VELK=" VELK_COMMAND), u"script"_s,
                          u"-qec"_s, u"\"$VELK\" "_s + arguments, u"/dev/null"_s})
        .output.remove(u'\r');
}
}

class TerminalTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void coloursOnTerminals()
    {
        const QString query = u"routes --source-ref U2 --source-pin HI --dut-ref J1#3 --dut-pin IN_P --max-switches 1 "
                              "--switchable Relay --max-connections 1 --interface Resistor "_s +
                              demo.join(u' ');
        QCOMPARE(onTerminal(query), u"1. \x1b[1;32mU2#1.HI\x1b[0m -> \x1b[36mK1#1\x1b[0m -> \x1b[36mK301#2\x1b[0m -> "
                                    "\x1b[1;32mJ1#3.IN_P\x1b[0m (2 switches; also connects \x1b[33mR3#1.2\x1b[0m)\n"
                                    "1 route: 1 of 2 switches\n"_s);
        QVERIFY(!onTerminal(query, u"1"_s).contains(u'\x1b'));
        QVERIFY(!onTerminal(query + u" --format csv"_s).contains(u'\x1b'));

        const QString list = u"list components "_s + demo.join(u' ');
        QString shown = onTerminal(list);
        QVERIFY(shown.startsWith(u"\x1b[1mREF"_s));
        QCOMPARE(shown.count(u"\x1b[36m"_s), 68);
        static const QRegularExpression codes(u"\x1b\\[[0-9;]*m"_s);
        QCOMPARE(shown.remove(codes), velk(list.split(u' ')).output);

        QVERIFY(onTerminal(u"check "_s + demo.first(2).join(u' '))
                    .startsWith(u"\x1b[1midentifier-once\x1b[0m: 1 finding\n  \x1b[36mX2#2\x1b[0m: no other "_s));
    }

    // A file that takes three seconds to come, read with and without a terminal.
    void progressOnTerminals()
    {
        QTemporaryDir folder;
        const Result result =
            shell(u"cd \"$2\"; mkfifo a b; (sleep 3; tee a <\"$1\" >b) & \"$0\" list nets b >plain 2>errors & "
                  "TERM=xterm NO_COLOR=1 VELK=$0 script -qec '\"$VELK\" list nets a' /dev/null; wait; cat errors >&2"_s,
                  {QStringLiteral(VELK_SOURCE_DIR "/") + demo.at(0), folder.path()});
        QCOMPARE(result.errors, QString());
        QVERIFY2(result.output.startsWith(u"\r\x1b[?7lvelk: reading a ("_s), qPrintable(result.output));
        const QString erased = u"\r\x1b[K"_s;
        QCOMPARE(result.output.section(erased, -1).remove(u'\r'), read(folder.filePath(u"plain"_s)));
    }

    // What a terminal shows is not what a file gets.
    void dataCannotSteerTheTerminal()
    {
        QTemporaryDir folder;
        const QString board = folder.filePath(u"a.net"_s);
        write(board,
              u"(export (components (comp (ref A)) (comp (ref B))) (libparts) (nets (net (name \"\u009b2Jä\u202e\") "
              "(node (ref A) (pin 1)) (node (ref B) (pin 1)))))"_s);
        for (const QString &command :
             {u"list nets --format csv"_s, u"list nets --format json"_s,
              u"routes --source-ref A --source-pin 1 --dut-ref B --dut-pin 1 --format dot"_s}) {
            const QString arguments = command + u" --tolerant "_s + board;
            const QString exact = velk(arguments.split(u' ')).output;
            QVERIFY(exact.contains(u"\u009b2Jä\u202e"_s));
            const QString expected = QString(exact).replace(u'\u009b', u"\\x9B"_s).replace(u'\u202e', u"\\u202E"_s);
            QVERIFY(onTerminal(arguments).endsWith(expected));
            QVERIFY(onTerminal(arguments + u" -o /dev/tty >/dev/null"_s).endsWith(expected));
        }
    }
};

VELK_TEST(TerminalTest)

#include "TerminalTest.moc"
