#include "tests/support/TestRegistry.h"
#include "tests/support/TextTable.h"

#include <velk/kicad/KiCadNetlistFile.h>

#include <QBuffer>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace {

/// Only what there is to tell.
QString outcomeOf(const KiCadNetlistFile &file)
{
    QString text = u"%1 %2"_s.arg(file.fileName()).arg(static_cast<int>(file.error()));
    if (!file.errorText().isEmpty())
        text += u' ' + file.errorText();
    if (file.errorLine() >= 0)
        text += u" at %1:%2"_s.arg(file.errorLine()).arg(file.errorColumn());
    if (file.encodingErrorLine() >= 0)
        text += u" encoding %1:%2"_s.arg(file.encodingErrorLine()).arg(file.encodingErrorColumn());
    return text + (file.isComplete() ? u" complete"_s : QString()) + (file.netlist() ? u" loaded"_s : QString());
}
}

class KiCadNetlistFileTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void tells_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<bool>("isTolerant");
        QTest::addColumn<QString>("outcome");
        QTest::addColumn<QString>("refusal");
        QTest::addColumn<QString>("warning"); // the first one
        const QByteArray good =
            "(export (components (comp (ref \"K1\") (value \"\") (libsource (part \"R\")))) (libparts "
            "(libpart (part \"R\") (pins (pin (num \"1\") (name \"\") (type \"\"))))) (nets))";
        const QString loaded = u"a.net 0 complete loaded"_s;
        const QString cutOff =
            u"the file is not one list in parentheses as a whole; was it cut off, or is something around it?"_s;
        const QString incomplete = u"is not one list in parentheses as a whole"_s;
        QTest::newRow("good") << good << false << loaded << u""_s << u""_s;
        QTest::newRow("syntax")
            << good + "\n )" << false
            << u"a.net 2 Syntax error in KiCad at line 2, column 2: a closing parenthesis without an opening one at 2:2"_s
            << u"Syntax error in KiCad at line 2, column 2: a closing parenthesis without an opening one"_s << u""_s;
        QTest::newRow("tolerant syntax")
            << QByteArray("(export ())") << true
            << u"a.net 2 Syntax error in KiCad at line 1, column 10: a parenthesis that closes nothing, or a list without a name at 1:10"_s
            << u"Syntax error in KiCad at line 1, column 10: a parenthesis that closes nothing, or a list without a name"_s
            << u""_s;
        QTest::newRow("another format")
            << QByteArray("(kicad_sch)") << true
            << u"a.net 3 is not a KiCad netlist: it does not begin with \"(export\" complete"_s
            << u"is not a KiCad netlist: it does not begin with \"(export\""_s << u""_s;
        QTest::newRow("empty") << QByteArray("") << false
                               << u"a.net 3 is not a KiCad netlist: it does not begin with \"(export\" complete"_s
                               << u"is not a KiCad netlist: it does not begin with \"(export\""_s << u""_s;
        QTest::newRow("element missing and cut off")
            << QByteArray("(export (libparts)") << false
            << u"a.net 4 Could not find KiCad token for path '/export/components'"_s
            << u"Could not find KiCad token for path '/export/components'; "_s + cutOff << u""_s;
        for (const bool isTolerant : {false, true})
            QTest::addRow("cut off %d", isTolerant)
                << good.chopped(1) << isTolerant << u"a.net 0 loaded"_s << cutOff << incomplete;
        const QByteArray latin1 = QByteArray(good).replace("K1", "K\xe4");
        QTest::newRow("Latin-1")
            << latin1 << false << u"a.net 0 encoding 1:34 complete loaded"_s << u"is not UTF-8 at line 1, column 34"_s
            << u"is not UTF-8 at line 1, column 34, so names that differ there alone are taken for one"_s;
        QTest::newRow("tolerant Latin-1") << latin1 << true << u"a.net 0 encoding 1:34 complete loaded"_s << u""_s
                                          << u"is not UTF-8 at line 1, column 34, and taken as Latin-1 there"_s;
        QTest::newRow("netlist twice") << good.chopped(8) + "(nets) (nets))" << false << loaded << u""_s
                                       << u"/export/nets: listed 2 times, and the first one holds"_s;
    }
    void tells()
    {
        QFETCH(QByteArray, text);
        QFETCH(bool, isTolerant);
        QFETCH(QString, warning);
        QBuffer buffer(&text);
        const KiCadNetlistFile file(&buffer, u"a.net"_s,
                                    isTolerant ? KiCadReadingMode::Tolerant : KiCadReadingMode::Default);
        QTEST(outcomeOf(file), "outcome");
        QTEST(file.refusal(), "refusal");
        QCOMPARE(file.warnings().value(0), warning);
        QCOMPARE(file.repetitions().size(), warning.contains(u"2 times"_s) ? 1 : 0);
    }

    void readsFiles()
    {
        const QString name = QStringLiteral(VELK_TEST_DATA "/two_relays.net");
        KiCadNetlistFile file(u"none.net"_s);
        QCOMPARE(outcomeOf(file), u"none.net 1 cannot be read: No such file or directory"_s);
        file = KiCadNetlistFile(name);
        const auto copy = file;
        file = KiCadNetlistFile(u"none.net"_s);
        QCOMPARE(outcomeOf(copy), name + u" 0 complete loaded"_s);
        QCOMPARE(copy.netlist()->getComponentByRef(u"K1"_s)->value, u"5 V"_s);
    }
};

VELK_TEST(KiCadNetlistFileTest)

#include "KiCadNetlistFileTest.moc"
