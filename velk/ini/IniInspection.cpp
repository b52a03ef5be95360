#include <velk/ini/IniInspection.h>

#include <velk/ini/IniMisreadings.h>
#include <velk/ini/IniText.h>

using namespace Qt::StringLiterals;

namespace Velk {

void IniInspection::writeSection(const QString &name, const QStringList & /*comments*/)
{
    begun = name;
}

void IniInspection::writeProperty(const QString &key, const QString &value, const QStringList & /*comments*/)
{
    enterSection();
    const bool isKeyPlain = isPlainIniText(key);
    const QString written = isKeyPlain ? key : writtenKey(key);
    compareKeys(written);
    if ((isKeyPlain && isPlainIniText(value)) || knownEntries.contains({key, value}))
        return;
    knownEntries.insert({key, value});
    warn(u"%1 %2"_s.arg(place, written), misreadingsOfEntry(written, writtenIniValue(value)));
}

QString IniInspection::writtenKey(const QString &key)
{
    QString &written = writtenKeys[key];
    if (written.isNull())
        written = writtenIniKey(key);
    return written;
}

/// Two sections of one name, one behind the other, are one to those who read them.
void IniInspection::enterSection()
{
    if (sectionNumber > 0 && begun == section)
        return;
    section = begun;
    ++sectionNumber;
    laterKeys.clear();
    const QString written = writtenIniSection(section);
    place = u"[%1]"_s.arg(written);
    warn(place, misreadingsOfSection(written));
}

void IniInspection::compareKeys(const QString &key)
{
    FirstKey &first = firstKeys[key.toCaseFolded()];
    if (first.sectionNumber != sectionNumber) {
        first = {key, sectionNumber};
        return;
    }
    const bool isKnown = key == first.key || laterKeys.contains(key);
    laterKeys.insert(key);
    if (reportedKeys.contains(key))
        return;
    reportedKeys.insert(key);
    if (isKnown)
        warn(place, {u"the key %1 occurs more than once"_s.arg(key)});
    else
        warn(place, {u"the keys '%1' and '%2' differ in case only"_s.arg(first.key, key)});
}

void IniInspection::warn(const QString &where, const QStringList &texts)
{
    for (const QString &text : texts)
        found.append(u"%1: %2"_s.arg(where, text));
}
}
