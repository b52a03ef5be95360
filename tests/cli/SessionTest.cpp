#include "tests/support/Boards.h"
#include "tests/support/TestRegistry.h"
#include "tests/support/TextTable.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// What goes to standard output, then to standard error, then the exit status if it is not 0.
QString transcript(const Result &result)
{
    QString text = result.output + result.errors;
    text.replace(u'\r', u"\\r"_s);
    return result.status == 0 ? text : text + u"exit status %1\n"_s.arg(result.status);
}
}

/// What a user sees of the command, in a folder with the boards of the case and links to the example system and to
/// tests/data.
///
/// Commands stand behind "$ ", which a shell runs, and what they say below: first on standard output, then on standard
/// error. $demo is the example system. Boards may follow the commands, separated by "--", which are 1.net, 2.net, ... A
/// line of theirs is a component with the pins of its part, "NUMBER=NAME", and its properties, in which "~" is a blank,
/// or a net with its nodes; a board that begins with a parenthesis is a netlist as it stands.
class SessionTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shows_data()
    {
        addCasesFrom({"sessions/routes.txt", "sessions/list.txt", "sessions/check.txt", "sessions/ini.txt",
                      "sessions/state.txt", "sessions/coverage.txt", "sessions/system.txt",
#ifdef VELK_HAS_PLANNING
                      "sessions/plan.txt",
#endif
                      "sessions/any_command.txt"});
    }
    void shows()
    {
        QFETCH(QString, input);
        const QTemporaryDir folder;
        QVERIFY(QFile::link(QStringLiteral(VELK_SOURCE_DIR "/examples/demo"), folder.filePath(u"demo"_s)) &&
                QFile::link(QStringLiteral(VELK_TEST_DATA), folder.filePath(u"data"_s)));
        QString script =
            u"velk() { '%1' \"$@\"; }\n"
            "demo='demo/instruments.net demo/matrix.net demo/adapter.net'\n"_s.arg(QStringLiteral(VELK_COMMAND));
        while (input.startsWith(u"$ "_s)) {
            script += input.section(u'\n', 0, 0).mid(2) + u'\n';
            input = input.section(u'\n', 1);
        }
        writeBoards(input, folder.path());
        QFETCH(QString, expected);
        const QString shown = transcript(run(u"sh"_s, {u"-c"_s, script}, folder.path())).trimmed();
        QVERIFY2(shown == expected, qPrintable(shown));
    }
};

VELK_TEST(SessionTest)

#include "SessionTest.moc"
