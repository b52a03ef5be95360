#include "tests/support/TestRegistry.h"

#include <velk/kicad/KiCadReader.h>

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace Velk;

class KiCadReaderTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void reads_data()
    {
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<QString>("expected"); // name=value(children), or the error
        const auto row = [](const char *name, const QByteArray &input, const QString &expected) {
            QTest::newRow(name) << input << expected;
        };
        row("netlist", "(export (version \"E\"))", u"export=(version=E)"_s);
        row("nothing", "", u"none"_s);
        row("only a name", "(a", u"none"_s);
        row("made at the next parenthesis", "(a (", u"a="_s);
        row("never closed", "(a (b \"1\") (c", u"a=(b=1)"_s);
        row("closed at once", "()", u"error 1:2"_s);
        row("inner parentheses close the outer token", "(a ())", u"error 1:6"_s);
        row("error on a later line", "(a\n  (b))\n )", u"error 3:2"_s);
        row("blank inside a value", "(ref \"U 1\")", u"ref=U 1"_s);
        row("name is trimmed", "( \t ref  \"U1\"  )", u"ref=U1"_s);
        row("name with a blank inside", "(num 1)", u"num 1="_s);
        row("parentheses inside quotes", "(a \"(b) (c\")", u"a=(b) (c"_s);
        row("no escape character", "(a \"x\\\" (b \"y\"))", u"a=x\\(b=y)"_s);
        row("two quoted texts are one value", "(a \"x\" \"y\")", u"a=xy"_s);
        row("text after a sub-list goes to the next token", "(a (b \"x\") \"y\" (c \"z\") (d \"w\"))",
            u"a=(b=x c=yz d=w)"_s);
        row("value goes on in the next line", "(a \"x\ny\")", u"a=xy"_s);
        row("name goes on in the next line", "(ab\r\ncd \"x\")", u"abcd=x"_s);
        row("quote never closed", "(a (b \"x) (c))", u"a="_s);
        row("a second tree is not attached", "(a (b)) (c (d))", u"a=(b=)"_s);
        row("UTF-8", "(a \"\xce\xa9\")", u"a=\u03a9"_s);
        row("column counts characters", "(a \"\xce\xa9\"))", u"error 1:8"_s);
    }
    void reads()
    {
        QFETCH(QByteArray, input);
        KiCadReader reader(input);
        QTEST(outcome(reader), "expected");
        QTEST(outcome(reader), "expected"); // again from the start
    }

    void positionChangesWithErrorsOnly()
    {
        KiCadReader reader(QByteArray("(a)"));
        QCOMPARE(reader.getErrorLine(), -1);
        QVERIFY(reader.getRoot().isNull());
        QCOMPARE(reader.read(), KiCadNoError);
        QCOMPARE(reader.getErrorLine(), -1);
        QCOMPARE(reader.getErrorColumn(), -1);
    }

    void readsDevices()
    {
        QTemporaryDir folder;
        QFile missing(folder.filePath(u"missing.net"_s));
        KiCadReader failing(&missing);
        QCOMPARE(failing.read(), KiCadOpenError);

        QFile file(QStringLiteral(VELK_TEST_DATA "/quirks/empty.net"));
        KiCadReader reader(&file);
        QCOMPARE(reader.read(), KiCadNoError);
        QVERIFY(!file.isOpen());
        QVERIFY(reader.getRoot()->find(u"/export/nets"_s));
    }

    void tellsCutOffInput()
    {
        for (const char *input : {"(a (b)", "(a \"b", "(a))", "(a (b)) (c"}) {
            KiCadReader reader{QByteArray(input)};
            reader.read();
            QVERIFY2(!reader.isComplete(), input);
        }
        KiCadReader reader(QByteArray("(a (b))\n"));
        reader.read();
        QVERIFY(reader.isComplete());
    }

    void errorTexts()
    {
        QCOMPARE(kiCadErrorText(KiCadNoError), u"No error"_s);
        QCOMPARE(kiCadErrorText(static_cast<KiCadError>(-1)), u"Could not open KiCad"_s);
        QCOMPARE(kiCadErrorText(static_cast<KiCadError>(-2)), u"Syntax error in KiCad"_s);
        QCOMPARE(kiCadErrorText(static_cast<KiCadError>(-3)), u"Unknown error"_s);
    }

private:
    static QString dump(const QSharedPointer<KiCadToken> &token)
    {
        QStringList children;
        for (const auto &child : std::as_const(token->children))
            children.append(dump(child));
        const QString text = token->name + u'=' + token->value;
        return children.isEmpty() ? text : u"%1(%2)"_s.arg(text, children.join(u' '));
    }

    static QString outcome(KiCadReader &reader)
    {
        if (reader.read() == KiCadSyntaxError)
            return u"error %1:%2"_s.arg(reader.getErrorLine()).arg(reader.getErrorColumn());
        return reader.getRoot() ? dump(reader.getRoot()) : u"none"_s;
    }
};

VELK_TEST(KiCadReaderTest)

#include "KiCadReaderTest.moc"
