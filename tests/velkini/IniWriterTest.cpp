#include "tests/support/TestRegistry.h"

#include <velk/VelkVersion.h>
#include <velkini/IniWriter.h>

#include <QBuffer>
#include <QFile>
#include <QRandomGenerator>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace Velk;

class IniWriterTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void writesText()
    {
        QBuffer buffer;
        IniWriter writer(&buffer);
        QVERIFY(writer.open());
        writer.writeSection(u"a"_s, {u"first"_s, u"second"_s});
        writer.writeProperty(u"key"_s, u"=[x] ;#\\ Ω"_s, {u"of the entry"_s});
        writer.writeSection(u"x]y"_s, {u"third"_s});
        writer.writeComment(u"text"_s);
        for (const QString &key :
             {u"a=b=c"_s, u"[k]"_s, u";k"_s, u"#k"_s, u" #k"_s, u"\ufeff[k"_s, u"k;#["_s, QString()})
            writer.writeProperty(key, {}, {});
        writer.writeProperty(u"c\n"_s, u"\n\r\t\0\x05\x1b\x7f\u0085"_s, {});
        writer.close();
        QVERIFY(!buffer.isOpen());
        QCOMPARE(QString::fromUtf8(buffer.data()),
                 u"; first\n; second\n[a]\n; of the entry\nkey==[x] ;#\\ Ω\n\n; third\n[x\\]y]\n; text\n"
                 "a\\=b\\=c=\n\\[k]=\n\\;k=\n\\#k=\n \\#k=\n\ufeff\\[k=\nk;#[=\n=\n"
                 "c\\n=\\n\\r\\t\\0\\x05\\x1B\\x7F\\x85\n"_s);
    }

    void opensAndCloses()
    {
        QBuffer buffer;
        {
            IniWriter writer(&buffer);
            QVERIFY(writer.open());
            writer.writeSection(u"a longer text"_s, {});
            writer.close();
            QVERIFY(writer.open());
            writer.writeSection(u"a"_s, {});
            QVERIFY(buffer.isTextModeEnabled());
        }
        QVERIFY(!buffer.isOpen());
        QCOMPARE(buffer.data(), "[a]\n");

        QVERIFY(buffer.open(QIODevice::Append));
        {
            IniWriter writer(&buffer);
            QVERIFY(writer.open());
            writer.writeComment(u"b"_s);
            writer.close();
        }
        QVERIFY(buffer.isOpen());
        QCOMPARE(buffer.data(), "[a]\n; b\n");

        QBuffer readOnly;
        QVERIFY(readOnly.open(QIODevice::ReadOnly));
        QVERIFY(!IniWriter(&readOnly).open());
        QFile nowhere(u"/no/such/folder/file.ini"_s);
        IniWriter lost(&nowhere);
        QVERIFY(!lost.open());
        lost.writeSection(u"lost"_s, {}); // quietly
        lost.close();
    }

    void version() { QCOMPARE(IniWriter::version(), QStringLiteral(VELK_VERSION_STRING)); }

    // Whatever the texts are, a call makes the lines that it is for and no others.
    void noTextForgesStructure()
    {
        for (quint32 seed = 0; seed < 2000; ++seed) {
            QRandomGenerator random(seed);
            QBuffer buffer;
            IniWriter writer(&buffer);
            writer.open();
            QByteArray expected; // a letter for each line: s, p, c, or e for empty
            for (int call = 0; call < 8; ++call) {
                const QStringList comments(random.bounded(2), hostileText(random));
                if (random.bounded(3) == 0) {
                    expected += (expected.isEmpty() ? "" : "e") + QByteArray("c").repeated(comments.size()) + 's';
                    writer.writeSection(hostileText(random), comments);
                } else if (random.bounded(4) == 0) {
                    expected += 'c';
                    writer.writeComment(hostileText(random));
                } else {
                    expected += QByteArray("c").repeated(comments.size()) + 'p';
                    writer.writeProperty(hostileText(random), hostileText(random), comments);
                }
            }
            const QByteArray found = kindsOfLines(buffer.data());
            QVERIFY2(found == expected, qPrintable(u"seed %1:\n%2"_s.arg(seed).arg(QString::fromUtf8(buffer.data()))));
        }
    }

private:
    static QString hostileText(QRandomGenerator &random)
    {
        static const QString characters = u"\n\r][=;#\\ \tk\u0085\u2028\x0b\x0cΩ\0"_s;
        QString text;
        for (int i = random.bounded(5); i > 0; --i)
            text += characters.at(random.bounded(characters.size()));
        return text;
    }

    /// As a reader sees them that knows every line break and drops blanks at the start of a line.
    static QByteArray kindsOfLines(const QByteArray &ini)
    {
        QByteArray kinds;
        for (const QString &line :
             QString::fromUtf8(ini).chopped(1).split(QRegularExpression(u"\r\n|[\n\r\x0b\x0c\u0085]"_s))) {
            const QString text = line.trimmed();
            if (text.startsWith(u';') || text.startsWith(u'#'))
                kinds += 'c';
            else if (text.startsWith(u'['))
                kinds += text.endsWith(u']') ? 's' : '?';
            else
                kinds += text.isEmpty() ? 'e' : text.contains(u'=') ? 'p' : '?';
        }
        return kinds;
    }
};

VELK_TEST(IniWriterTest)

#include "IniWriterTest.moc"
