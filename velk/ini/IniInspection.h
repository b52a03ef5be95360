#ifndef VELK_INI_INIINSPECTION_H
#define VELK_INI_INIINSPECTION_H

#include <QHash>
#include <QPair>
#include <QSet>
#include <QString>
#include <QStringList>

namespace Velk {

/// Takes the rows of an INI file as IniWriter does, and tells what readers would make of them.
class IniInspection
{
public:
    void writeSection(const QString &name, const QStringList &comments);
    void writeProperty(const QString &key, const QString &value, const QStringList &comments);
    void writeComment(const QString & /*text*/) {}

    /// A line each, with the first section to which it applies: a key that stands in a section more than once, or in
    /// upper and lower case, and what QSettings or configparser misread. Nothing is told of a section without entries.
    const QStringList &warnings() const { return found; }

private:
    void enterSection();
    QString writtenKey(const QString &key);
    void compareKeys(const QString &key);
    void warn(const QString &where, const QStringList &texts);

    QString begun;   ///< the section of the next entry
    QString section; ///< that of the last one
    QString place;   ///< the same as it is written, in its brackets
    struct FirstKey
    {
        QString key;
        qsizetype sectionNumber = 0; ///< of the last section that has it, counted from 1
    };
    // Of the keys of a section that differ in case only the first, by what they have in common, and the others. The
    // former stay for the next section, which is mostly alike.
    QHash<QString, FirstKey> firstKeys;
    QSet<QString> laterKeys;
    qsizetype sectionNumber = 0;
    // Many sections hold the same entries.
    QHash<QString, QString> writtenKeys;
    QSet<QString> reportedKeys;
    QSet<QPair<QString, QString>> knownEntries;
    QStringList found;
};
}

#endif
