#include <velkini/IniWriter.h>

#include <QIODevice>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace Velk {

namespace {

QString escapedControl(QChar c)
{
    switch (c.unicode()) {
    case u'\n':
        return u"\\n"_s;
    case u'\r':
        return u"\\r"_s;
    case u'\t':
        return u"\\t"_s;
    case u'\0':
        return u"\\0"_s;
    default:
        return u"\\x%1"_s.arg(QString::number(c.unicode(), 16).toUpper().rightJustified(2, u'0'));
    }
}

// With a backslash before each character of \a special.
QString escaped(const QString &text, QStringView special = {})
{
    QString result;
    result.reserve(text.size());
    for (const QChar c : text) {
        if (c.category() == QChar::Other_Control) {
            result += escapedControl(c);
            continue;
        }
        if (special.contains(c))
            result += u'\\';
        result += c;
    }
    return result;
}

// Readers that drop blanks at the start of a line, or a byte-order mark at the start of the file, look at the first
// character behind them.
QString escapedKey(const QString &key)
{
    QString text = escaped(key, u"=");
    const auto first =
        std::find_if(text.cbegin(), text.cend(), [](QChar c) { return !c.isSpace() && c != QChar::ByteOrderMark; });
    if (first == text.cend() || !u"[;#"_s.contains(*first))
        return text;
    return text.insert(first - text.cbegin(), u'\\');
}
}

IniWriter::IniWriter(QIODevice *output)
    : device(output)
{
}

IniWriter::~IniWriter()
{
    close();
}

bool IniWriter::open()
{
    if (device->isOpen())
        return device->isWritable();
    // Not every device truncates when it is opened for writing: a QBuffer does not.
    openedDevice = device->open(QIODevice::WriteOnly | QIODevice::Text | QIODevice::Truncate);
    atStart = true;
    return openedDevice;
}

void IniWriter::writeSection(const QString &name, const QList<QString> &comments)
{
    if (!atStart)
        writeLine({});
    writeComments(comments);
    writeLine(u"[%1]"_s.arg(escaped(name, u"]")));
}

void IniWriter::writeProperty(const QString &key, const QString &value, const QList<QString> &comments)
{
    writeComments(comments);
    writeLine(u"%1=%2"_s.arg(escapedKey(key), escaped(value)));
}

void IniWriter::writeComment(const QString &text)
{
    writeLine(u"; %1"_s.arg(escaped(text)));
}

void IniWriter::close()
{
    if (openedDevice)
        device->close();
    openedDevice = false;
}

QString IniWriter::version()
{
    return QStringLiteral(VELKINI_VERSION);
}

void IniWriter::writeLine(const QString &line)
{
    atStart = false;
    if (device->isWritable())
        device->write((line + u'\n').toUtf8());
}

void IniWriter::writeComments(const QList<QString> &comments)
{
    for (const QString &comment : comments)
        writeComment(comment);
}
}
