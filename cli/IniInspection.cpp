#include "cli/IniInspection.h"

#include "cli/IniMisreadings.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace VelkCli {

namespace {

/// Equal for keys that differ in case only.
QByteArray caseless(const QByteArray &key)
{
    const bool isAscii = std::all_of(key.cbegin(), key.cend(), [](char c) { return (c & 0x80) == 0; });
    return isAscii ? key.toLower() : toText(key).toCaseFolded().toUtf8();
}
}

IniInspection::IniInspection(QIODevice &target)
    : output(target)
    , reader([this](const IniEntry &entry) { inspect(entry); })
{
    open(QIODevice::WriteOnly);
}

qint64 IniInspection::readData(char * /*data*/, qint64 /*maxSize*/)
{
    return -1;
}

qint64 IniInspection::writeData(const char *data, qint64 size)
{
    reader.read({data, static_cast<qsizetype>(size)});
    return output.write(data, size);
}

void IniInspection::inspect(const IniEntry &entry)
{
    if (entry.section != section) {
        section = entry.section;
        ++sectionNumber;
        laterKeys.clear();
        warn(toText(section), misreadingsOfSection(section));
    }
    compareKeys(entry.key);
    const QStringList misreadings = misreadingsOfEntry(entry);
    if (misreadings.isEmpty() || reportedEntries.contains({entry.key, entry.value}))
        return;
    reportedEntries.insert({entry.key, entry.value});
    warn(u"%1 %2"_s.arg(toText(section), toText(entry.key)), misreadings);
}

void IniInspection::compareKeys(const QByteArray &key)
{
    FirstKey &first = firstKeys[caseless(key)];
    if (first.sectionNumber != sectionNumber) {
        first = {key, sectionNumber};
        return;
    }
    const bool isKnown = key == first.key || laterKeys.contains(key);
    laterKeys.insert(key);
    if (reportedKeys.contains(key))
        return;
    reportedKeys.insert(key);
    const QString place = toText(section);
    const QString text = toText(key);
    if (isKnown)
        warn(place, {u"the key %1 occurs more than once"_s.arg(text)});
    else
        warn(place, {u"the keys '%1' and '%2' differ in case only"_s.arg(toText(first.key), text)});
}

void IniInspection::warn(const QString &place, const QStringList &texts)
{
    for (const QString &text : texts)
        found.append(u"%1: %2"_s.arg(place, text));
}
}
