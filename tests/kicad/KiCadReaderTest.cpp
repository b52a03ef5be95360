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
        QVERIFY(reader.getRoot().isNull());
        QTEST(outcome(reader), "expected");
        QTEST(outcome(reader), "expected"); // again from the start
        QCOMPARE(reader.getRoot().data(), reader.getRoot().data());
        const bool hasPosition = reader.getErrorLine() != -1 || reader.getErrorColumn() != -1;
        QCOMPARE(hasPosition, outcome(reader).startsWith(u"error "_s));
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
        QTest::newRow("overlong parenthesis") << bytes("(a \"\"\xc0\xa8)") << u"a \ufffd\ufffd="_s;
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

    void tellsWhatIsNotUtf8_data()
    {
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<QString>("position");
        QTest::addColumn<QString>("expected");
        QTest::addColumn<QString>("tolerant");
        const auto add = [](const char *name, const QByteArray &input, const QString &position, const QString &expected,
                            const QString &tolerant) {
            QTest::newRow(name) << input << position << expected << tolerant;
        };
        const QByteArray many = QByteArray("\xc3\xa4").repeated(20000);
        for (const char *text : {"😀", "x😀", "xy😀", "äx", "x€"}) // each cut elsewhere by the pipe
            add(text, "(a \"" + QByteArray(text) + "\")", u"-1:-1"_s, u"a="_s + QString::fromUtf8(text),
                u"a="_s + QString::fromUtf8(text));
        add("Latin-1", "(a (b \"/\xe4\") (b \"/\xf6\"))", u"1:9"_s, u"a=(b=/\ufffd b=/\ufffd)"_s, u"a=(b=/ä b=/ö)"_s);
        add("on a later line", "(a \"\xc3\xa4\r\n\r\xc3\xa4\xff\")", u"2:2"_s, u"a=ää\ufffd"_s, u"a=ä\näÿ"_s);
        add("that begins none", "(a \"\xe4\xf0\")", u"1:5"_s, u"a=\ufffd\ufffd"_s, u"a=äð"_s);
        add("cut off inside", "(a \"\xe2\x82\")", u"1:5"_s, u"a=\ufffd\ufffd"_s, u"a=â\x82"_s);
        add("cut off at the end", "(a (b))\xe2\x82", u"1:8"_s, u"a=(b=)"_s, u"a=(b=)"_s);
        add("far behind", "(a \"" + many + "\n" + many + "\xe4\" (c))", u"2:20001"_s,
            u"a=%1(c=)"_s.arg(QString::fromUtf8(many + many) + u'\ufffd'),
            u"a=%1(c=)"_s.arg(QString::fromUtf8(many + '\n' + many) + u'ä'));
    }
    void tellsWhatIsNotUtf8()
    {
        QFETCH(QByteArray, input);
        QFETCH(QString, expected);
        QFETCH(QString, tolerant);
        for (const auto mode : {KiCadReadingMode::Default, KiCadReadingMode::Tolerant}) {
            Pipe pipe(input);
            KiCadReader fromBytes(input, mode);
            KiCadReader fromPipe(&pipe, mode);
            for (KiCadReader *reader : {&fromBytes, &fromBytes, &fromPipe}) {
                QVERIFY(outcome(*reader) == (mode == KiCadReadingMode::Default ? expected : tolerant));
                QTEST(u"%1:%2"_s.arg(reader->getEncodingErrorLine()).arg(reader->getEncodingErrorColumn()), "position");
            }
        }
    }

    void takesLinesFromDevicesThatIgnoreTextMode_data()
    {
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<QString>("expected");
        QTest::addColumn<QString>("tolerant");
        QTest::newRow("line end") << QByteArray("(a \"p\r\nq\")\r\n") << u"a=pq"_s << u"a=p\nq"_s;
        QTest::newRow("cut inside a line end") << QByteArray("(a \"\r\n\r\nq\")\r") << u"a=q"_s << u"a=\n\nq"_s;
        QTest::newRow("others stay") << QByteArray("(a \"p\rq\r\r\nr\")") << u"a=p\rq\rr"_s << u"a=p\rq\r\nr"_s;
    }
    void takesLinesFromDevicesThatIgnoreTextMode()
    {
        class PipeWithoutText : public Pipe
        {
        public:
            using Pipe::Pipe;
            bool open(OpenMode mode) override { return Pipe::open(mode & ~Text); }
        };
        QFETCH(QByteArray, input);
        for (const auto mode : {KiCadReadingMode::Default, KiCadReadingMode::Tolerant}) {
            PipeWithoutText pipe(input);
            KiCadReader reader(&pipe, mode);
            QTEST(outcome(reader), mode == KiCadReadingMode::Default ? "expected" : "tolerant");
            QVERIFY(reader.isComplete());
        }
    }

    void countsColumnsOfLongLines()
    {
        const QByteArray input = "(a (b)\n\"" + QByteArray("\xc3\xa4").repeated(40000) + "\"))";
        for (const auto mode : {KiCadReadingMode::Default, KiCadReadingMode::Tolerant}) {
            KiCadReader reader(input, mode);
            QCOMPARE(outcome(reader), u"error 2:40004"_s);
        }
    }

    void readsDevices()
    {
        QTemporaryDir folder;
        QFile missing(folder.filePath(u"missing.net"_s));
        KiCadReader failing(&missing);
        QCOMPARE(failing.read(), KiCadOpenError);
        QFile directory(folder.path());
        QCOMPARE(KiCadReader(&directory).read(), KiCadOpenError);

        QFile file(folder.filePath(u"a.net"_s));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("(a (b \"\xe4\"))") > 0);
        file.close();
        KiCadReader reader(&file);
        QCOMPARE(outcome(reader), u"a=(b=\ufffd)"_s);
        QVERIFY(!file.isOpen());

        QVERIFY(file.remove());
        QCOMPARE(reader.read(), KiCadOpenError);
        QVERIFY(reader.getRoot().isNull());
        QVERIFY(!reader.isComplete());
        QCOMPARE(reader.getEncodingErrorLine(), -1);
    }

    void readsWhatAFailingDeviceGives()
    {
        Pipe failing("(a (b c", 100);
        KiCadReader cut(&failing);
        QCOMPARE(outcome(cut), u"a="_s);
        QVERIFY(!cut.isComplete());
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
        for (const char *input : {"(a (b)", "(a \"b", "(a))", "(a (b)) (c", "(a (b)) (c)", "(a (b)) \"c"}) {
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
