#include "tests/support/TestRegistry.h"
#include "tests/support/TextTable.h"

#include <velk/naming/Suggestions.h>

#include <QTest>

using namespace Qt::StringLiterals;
using namespace Velk;

class SuggestionsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void nearest_data() { addRowsFrom("suggestions.txt", {"written", "texts", "expected"}); }
    void nearest()
    {
        QFETCH(QString, written);
        QFETCH(QString, texts);
        QTEST(enumeration(nearestFirst(written, texts.split(u' ', Qt::SkipEmptyParts))), "expected");
    }

    void longTextsAreCut()
    {
        const QString text(1'000'000, u'x');
        QCOMPARE(enumeration(nearestFirst(text, {text, u"x"_s, text + u'y'})), u"%1…, %1…, x"_s.arg(QString(79, u'x')));
    }
};

VELK_TEST(SuggestionsTest)

#include "SuggestionsTest.moc"
