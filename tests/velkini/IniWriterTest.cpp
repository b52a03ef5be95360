#include "tests/support/TestRegistry.h"

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
        writer.writeProperty(u"c\n"_s, u"\n\r\t\0\x1b\x7f\u0085"_s, {});
        writer.close();
        QVERIFY(!buffer.isOpen());
        QCOMPARE(QString::fromUtf8(buffer.data()),
                 u"; first\n; second\n[a]\n; of the entry\nkey==[x] ;#\\ Ω\n\n; third\n[x\\]y]\n; text\n"
                 "a\\=b\\=c=\n\\[k]=\n\\;k=\n\\#k=\n \\#k=\n\ufeff\\[k=\nk;#[=\n=\n"
                 "c\\n=\\n\\r\\t\\0\\x1B\\x7F\\x85\n"_s);
    }

    void leavesOpenDevicesOpen()
    {
        QBuffer buffer;
        QVERIFY(buffer.open(QIODevice::WriteOnly));
        IniWriter writer(&buffer);
        QVERIFY(writer.open());
        writer.close();
        QVERIFY(buffer.isOpen());

        QBuffer readOnly;
        QVERIFY(readOnly.open(QIODevice::ReadOnly));
        QVERIFY(!IniWriter(&readOnly).open());
        QFile nowhere(u"/no/such/folder/file.ini"_s);
        IniWriter lost(&nowhere);
        QVERIFY(!lost.open());
        lost.writeSection(u"lost"_s, {}); // quietly
        lost.close();
    }

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
        static const QStringList pieces{u"\n"_s,
                                        u"\r\n"_s,
                                        u"\r"_s,
                                        u"]"_s,
                                        u"["_s,
                                        u"="_s,
                                        u";"_s,
                                        u"#"_s,
                                        u"\\"_s,
                                        u" "_s,
                                        u"\t"_s,
                                        u"[a]\nb=c"_s,
                                        u"\u0085"_s,
                                        u"\u2028"_s,
                                        u"key"_s,
                                        u"\x0b"_s,
                                        u"\x0c"_s,
                                        u"Ω😀"_s,
                                        QString(5000, u'x'),
                                        QString(1, QChar(0))};
        QString text;
        for (int i = random.bounded(5); i > 0; --i)
            text += pieces.at(random.bounded(pieces.size()));
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
