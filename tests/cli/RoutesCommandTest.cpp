#include "tests/support/Command.h"
#include "tests/support/TestRegistry.h"
#include "tests/support/TextTable.h"

#include <QTest>

using namespace Qt::StringLiterals;

class RoutesCommandTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void routesAsText_data() { addRowsFrom("command_routes.txt", {"arguments", "status", "expected", "errors"}); }
    void routesAsText()
    {
        QFETCH(QString, arguments);
        QFETCH(QString, expected);
        const Result result = velk(QStringList{u"routes"_s} + argumentsOf(arguments) + demo);
        QFETCH(QString, errors);
        QCOMPARE(result.errors, errors.replace(u'¶', u'\n'));
        QTEST(QString::number(result.status), "status");
        QCOMPARE(result.output, expected.replace(u'/', u'\n'));
    }
};

VELK_TEST(RoutesCommandTest)

#include "RoutesCommandTest.moc"
