#include <velk/ini/IniMisreadings.h>

using namespace Qt::StringLiterals;

namespace Velk {

namespace {

const QString qt = u"QSettings"_s;
const QString python = u"configparser"_s;
const QString both = u"QSettings and configparser"_s;
// A text that has a backslash of its own is misread by the first, one in which it was put before something by the
// other.
const QString either = u"QSettings or configparser"_s;

/// Collects what is misread in a section name, a key or a value.
class Misreadings
{
public:
    Misreadings(const QString &written, const QString &nameOfPlace)
        : text(written)
        , place(nameOfPlace)
    {
    }

    void add(const QString &fault, const QString &readers)
    {
        found.append(u"%1 in the %2 is misread by %3"_s.arg(fault, place, readers));
    }

    void find(QChar character, const QString &name, const QString &readers)
    {
        if (text.contains(character))
            add(name, readers);
    }

    void findInAnyText()
    {
        find(u'"', u"quotation mark"_s, qt);
        find(u';', u"semicolon"_s, qt);
        find(u'\\', u"backslash"_s, either);
    }

    /// In what QSettings makes a path of.
    void findInName()
    {
        findInAnyText();
        find(u'%', u"percent sign"_s, qt);
        if (text.startsWith(u'/') || text.endsWith(u'/') || text.contains(u"//"_s))
            add(u"empty name beside a slash"_s, qt);
    }

    void findAtEnds()
    {
        if (text.startsWith(u' ') || text.endsWith(u' '))
            add(u"outer blank"_s, both);
        else if (text != text.trimmed())
            add(u"outer blank"_s, python);
        if (text.startsWith(QChar::ByteOrderMark))
            add(u"byte-order mark"_s, qt);
    }

    const QString text;
    QStringList found;

private:
    const QString place;
};
}

QStringList misreadingsOfSection(const QString &section)
{
    Misreadings name(section, u"section name"_s);
    name.findInName();
    if (name.text.endsWith(u' '))
        name.add(u"outer blank"_s, qt);
    return name.found;
}

QStringList misreadingsOfEntry(const QString &writtenKey, const QString &writtenValue)
{
    Misreadings key(writtenKey, u"key"_s);
    if (key.text.isEmpty())
        key.add(u"empty text"_s, both);
    key.findInName();
    key.findAtEnds();
    key.find(u':', u"colon"_s, python);

    Misreadings value(writtenValue, u"value"_s);
    value.findInAnyText();
    value.findAtEnds();
    value.find(u',', u"comma"_s, qt);
    value.find(u'%', u"percent sign"_s, python);
    if (value.text.startsWith(u"@@"_s) || (value.text.startsWith(u'@') && value.text.endsWith(u')')))
        value.add(u"at sign"_s, qt);
    return key.found + value.found;
}
}
