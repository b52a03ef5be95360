#include "fuzz/Fuzz.h"

#include <velkini/IniWriter.h>

#include <QBuffer>
#include <QStringList>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace Velk;
using namespace VelkFuzz;

namespace {

enum Kind
{
    empty,
    comment,
    section,
    property
};

/// A line as it is meant, its texts without backslashes.
struct Line
{
    Kind kind;
    QString text;
    QString key{};                ///< of a property
    bool endsInBackslash = false; ///< the key
};

QString withoutBackslashes(QString text)
{
    return text.remove(u'\\');
}

/// The text as it can be read in the file, without backslashes.
QString shown(const QString &text)
{
    QString result;
    for (const QChar c : withoutBackslashes(text)) {
        const qsizetype named = u"\n\r\t\0"_s.indexOf(c);
        if (named >= 0)
            result += u"nrt0"_s.at(named);
        else if (c.unicode() < 0x20 || (c.unicode() >= 0x7f && c.unicode() < 0xa0))
            result += u"x%1"_s.arg(c.unicode(), 2, 16, QLatin1Char('0')).toUpper().replace(u'X', u'x');
        else
            result += c;
    }
    return result;
}

/// Writes what the decisions say.
class Script
{
public:
    explicit Script(const QByteArray &input)
        : decisions(input)
        , writer(&buffer)
    {
        writer.open();
        while (!decisions.isAtEnd())
            writeNext();
        writer.close();
    }

    const QByteArray &written() const { return buffer.data(); }
    const QList<Line> &expected() const { return lines; }

private:
    void writeNext()
    {
        switch (decisions.number(3)) {
        case 0:
            writeSection();
            break;
        case 1:
            writeProperty();
            break;
        default:
            writer.writeComment(nextComment());
        }
    }

    void writeSection()
    {
        if (!lines.isEmpty())
            lines.append({empty, QString()});
        const QStringList comments = nextComments();
        const QString name = decisions.text();
        lines.append({section, u'[' + shown(name) + u']'});
        writer.writeSection(name, comments);
    }

    void writeProperty()
    {
        const QStringList comments = nextComments();
        const QString key = decisions.text();
        const QString value = decisions.text();
        lines.append({property, shown(key) + u'=' + shown(value), shown(key), key.endsWith(u'\\')});
        writer.writeProperty(key, value, comments);
    }

    QString nextComment()
    {
        QString text = decisions.text();
        lines.append({comment, u"; "_s + shown(text)});
        return text;
    }

    QStringList nextComments()
    {
        QStringList comments;
        for (int count = decisions.number(3); count > 0; --count)
            comments.append(nextComment());
        return comments;
    }

    Decisions decisions;
    QBuffer buffer;
    IniWriter writer;
    QList<Line> lines;
};

/// Each of them but the last one, which is the line's own.
bool areEscaped(QChar special, const QString &text)
{
    for (qsizetype i = text.indexOf(special); i >= 0 && i + 1 < text.size(); i = text.indexOf(special, i + 1)) {
        if (i == 0 || text.at(i - 1) != u'\\')
            return false;
    }
    return true;
}

/// What a reader takes the line for that drops blanks at its start, and a byte-order mark.
Kind kindOf(const QString &line)
{
    const QString text = QString(line).remove(QChar::ByteOrderMark).trimmed();
    if (text.startsWith(u';') || text.startsWith(u'#'))
        return comment;
    if (text.startsWith(u'['))
        return section;
    return text.isEmpty() ? empty : property;
}

/// Up to the first "=" that no backslash precedes. A key that ends in a backslash cannot be told from an escaped "=".
QString keyOf(const QString &line)
{
    qsizetype sign = line.indexOf(u'=');
    while (sign > 0 && line.at(sign - 1) == u'\\')
        sign = line.indexOf(u'=', sign + 1);
    return withoutBackslashes(line.left(sign));
}

void checkLine(const QString &line, const Line &expected)
{
    require(kindOf(line) == expected.kind, u"another kind of line: "_s + line);
    require(withoutBackslashes(line) == expected.text, u"another text: "_s + line);
    require(std::none_of(line.cbegin(), line.cend(), [](QChar c) { return c.category() == QChar::Other_Control; }),
            u"a control character: "_s + line);
    if (expected.kind == section)
        require(line.endsWith(u']') && areEscaped(u']', line), u"the section ends early: "_s + line);
    if (expected.kind == property && !expected.endsInBackslash)
        require(keyOf(line) == expected.key, u"another key: "_s + line);
}
}

/// Sections, properties and comments of any texts; each must make its own lines and no others.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const Script script(toBytes(data, size));
    QStringList lines = decoded(script.written()).split(u'\n');
    require(lines.takeLast().isEmpty(), u"the last line does not end"_s);
    require(lines.size() == script.expected().size(), u"number of lines"_s);
    for (qsizetype i = 0; i < lines.size(); ++i)
        checkLine(lines.at(i), script.expected().at(i));
    return 0;
}
