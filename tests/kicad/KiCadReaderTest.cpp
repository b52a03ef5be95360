#include "tests/support/Pipe.h"
#include "tests/support/TestRegistry.h"
#include "tests/support/TextTable.h"

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
    void reads_data() { addRowsFrom("reader_inputs.txt", {"input", "expected"}); }
    void reads()
    {
        QFETCH(QString, input);
        input.replace(u'¶', u'\n').replace(u'␍', u'\r').replace(u'␉', u'\t');
        KiCadReader reader(input.toUtf8());
        QTEST(outcome(reader), "expected");
        QTEST(outcome(reader), "expected"); // again from the start
    }

    void readsTolerantly_data() { addRowsFrom("tolerant_inputs.txt", {"input", "expected"}); }
    void readsTolerantly()
    {
        QFETCH(QString, input);
        QFETCH(QString, expected);
        for (QString *text : {&input, &expected})
            text->replace(u'¶', u'\n').replace(u'␍', u'\r').replace(u'␉', u'\t');
        KiCadReader reader(input.toUtf8(), KiCadReadingMode::Tolerant);
        QCOMPARE(outcome(reader), expected);
        QCOMPARE(outcome(reader), expected); // again from the start
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

    void readsPipesAndFailingDevices()
    {
        Pipe pipe("(a (b \"\xc3\xa4\xe2\x82\xac\") (c d))"); // characters cut between two reads
        KiCadReader reader(&pipe);
        QCOMPARE(outcome(reader), u"a=(b=ä€ c d=)"_s);
        QVERIFY(reader.isComplete());

        Pipe failing("(a (b c", 100);
        KiCadReader cut(&failing);
        QCOMPARE(outcome(cut), u"a="_s);
        QVERIFY(!cut.isComplete());
    }

    void tellsCutOffInput()
    {
        for (const char *input : {"(a (b)", "(a \"b", "(a))", "(a (b)) (c"}) {
            KiCadReader reader{QByteArray(input)};
            reader.read();
            QVERIFY2(!reader.isComplete(), input);
        }
        for (const char *input : {"(a (b", "(a \"b", "(a", "(", "x (a)", "(a) x "}) {
            KiCadReader reader(QByteArray(input), KiCadReadingMode::Tolerant);
            reader.read();
            QVERIFY2(!reader.isComplete(), input);
        }
        for (const auto mode : {KiCadReadingMode::Default, KiCadReadingMode::Tolerant}) {
            KiCadReader reader(QByteArray("(a (b))\n"), mode);
            reader.read();
            QVERIFY(reader.isComplete());
        }
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
