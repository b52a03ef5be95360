#include "tests/support/Pipe.h"
#include "tests/support/TestRegistry.h"
#include "tests/support/TextTable.h"

#include <velk/kicad/KiCadReader.h>

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTemporaryFile>
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

    void readsBytes_data()
    {
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<QString>("expected");
        const auto bytes = [](const auto &text) { return QByteArray(text, sizeof(text) - 1); };
        QTest::newRow("NUL") << bytes("(a\0b \"c\0d\")") << QString(u"a\0b=c\0d"_s);
        QTest::newRow("invalid UTF-8") << bytes("(a \"x\xffy\")") << u"a=x\ufffdy"_s;
        QTest::newRow("overlong parenthesis") << bytes("(a \"\"\xc0\xa8)") << u"a \ufffd\ufffd="_s;
        QTest::newRow("cut off character") << bytes("(a (b)\xe2\x82") << u"a=(b=)"_s;
        QTest::newRow("mark of UTF-8") << bytes("\xef\xbb\xbf(a)") << u"a="_s;
        QTest::newRow("mark of UTF-16, little end") << bytes("\xff\xfe(\0a\0)\0") << u"a="_s;
        QTest::newRow("mark of UTF-16, big end") << bytes("\xfe\xff\0(\0a\0)") << u"a="_s;
        QTest::newRow("mark of UTF-32, little end") << bytes("\xff\xfe\0\0(\0\0\0a\0\0\0)\0\0\0") << u"a="_s;
        QTest::newRow("mark of UTF-32, big end") << bytes("\0\0\xfe\xff\0\0\0(\0\0\0a\0\0\0)") << u"a="_s;
        QTest::newRow("mark inside") << bytes("(\xef\xbb\xbf"
                                              "a)")
                                     << u"\ufeffa="_s;
        QTest::newRow("lone carriage return") << bytes("(a\rb)") << u"ab="_s;
    }
    void readsBytes()
    {
        QFETCH(QByteArray, input);
        KiCadReader reader(input);
        QTEST(outcome(reader), "expected");
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

    void readsAFileThatShrinks()
    {
        class ShrinkingFile : public QTemporaryFile
        {
        protected:
            qint64 readData(char *data, qint64 maxSize) override
            {
                const qint64 count = QTemporaryFile::readData(data, qMin(maxSize, qint64(7)));
                resize(10);
                return count;
            }
        };
        ShrinkingFile file;
        QVERIFY(file.open() && file.write("(a (b (c (d (e)))))") > 0);
        file.close();
        KiCadReader reader(&file);
        QCOMPARE(outcome(reader), u"a=(b=(c=))"_s);
        QVERIFY(!reader.isComplete());
    }

    void refusesWhatCannotBeRead()
    {
        QTemporaryDir folder;
        QFile directory(folder.path());
        QCOMPARE(KiCadReader(&directory).read(), KiCadOpenError);
        QFile secret(folder.filePath(u"secret.net"_s));
        QVERIFY(secret.open(QIODevice::WriteOnly));
        secret.close();
        QVERIFY(secret.setPermissions(QFileDevice::WriteOwner));
        if (QFileInfo(secret).isReadable())
            QSKIP("this user may read everything");
        QCOMPARE(KiCadReader(&secret).read(), KiCadOpenError);
    }

    void tellsCutOffInput()
    {
        QFile file(QStringLiteral(VELK_TEST_DATA "/good.net"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray netlist = file.readAll().trimmed();
        for (qsizetype length = 2; length <= netlist.size(); ++length) {
            KiCadReader reader(netlist.left(length));
            QCOMPARE(reader.read(), KiCadNoError);
            QVERIFY2(reader.isComplete() == (length == netlist.size()), qPrintable(QString::number(length)));
        }
        for (const char *input : {"(a (b)", "(a \"b", "(a))", "(a (b)) (c", "(a (b)) (c)"}) {
            KiCadReader reader{QByteArray(input)};
            reader.read();
            QVERIFY2(!reader.isComplete(), input);
        }
        for (const char *input : {"(a (b", "(a \"b", "(a", "(", "x (a)", "(a) x ", "(a (b)) (c)"}) {
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
