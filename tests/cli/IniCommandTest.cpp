#include "tests/support/Boards.h"
#include "tests/support/Command.h"
#include "tests/support/TestRegistry.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class IniCommandTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    // As two sources would, one with a group has two entries for each pin.
    void refusesTooManyEntries()
    {
        const QTemporaryDir folder;
        const QString source = u"U1 [%1] CompType=Source, Group=G\n"_s.arg(u" 1"_s.repeated(251));
        const QString board = writeBoards(source + u"J1 [1] CompType=DUT, Bench=10000"_s, folder.path()).first();
        const Result result =
            velk({u"ini"_s, u"application"_s, u"--tolerant"_s, u"--test-system"_s, board, u"--application"_s, board});
        QCOMPARE(result.status, 2);
        const QString error = u"velk: J1: Bench=10000: with the sources in as many channel tables there would be "
                              "5020000 entries; there may be 5000000 at most\n"_s;
        QVERIFY2(result.errors.endsWith(error), qPrintable(result.errors));
    }
};

VELK_TEST(IniCommandTest)

#include "IniCommandTest.moc"
