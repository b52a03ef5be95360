#ifndef VELK_CLI_INIINSPECTION_H
#define VELK_CLI_INIINSPECTION_H

#include "cli/IniEntries.h"

#include <QHash>
#include <QIODevice>
#include <QSet>
#include <QStringList>

namespace VelkCli {

/// Passes an INI file on, as Velk writes it, and looks at what readers would make of it.
class IniInspection : public QIODevice
{
public:
    /// \a target is open for writing.
    explicit IniInspection(QIODevice &target);

    /// A line each, with the first section to which it applies: a key that stands in a section more than once, or in
    /// upper and lower case, and what QSettings or configparser misread.
    const QStringList &warnings() const { return found; }
    bool isSequential() const override { return true; }

protected:
    qint64 readData(char *data, qint64 maxSize) override;
    qint64 writeData(const char *data, qint64 size) override;

private:
    void inspect(const IniEntry &entry);
    void compareKeys(const QByteArray &key);
    void warn(const QString &place, const QStringList &texts);

    QIODevice &output;
    IniEntryReader reader;
    QByteArray section;
    struct FirstKey
    {
        QByteArray key;
        qsizetype sectionNumber = 0; ///< of the last section that has it, counted from 1
    };
    // Of the keys of a section that differ in case only the first, by what they have in common, and the others. The
    // former stay for the next section, which is mostly alike.
    QHash<QByteArray, FirstKey> firstKeys;
    QSet<QByteArray> laterKeys;
    qsizetype sectionNumber = 0;
    // Many sections hold the same entries.
    QSet<QByteArray> reportedKeys;
    QSet<QPair<QByteArray, QByteArray>> reportedEntries;
    QStringList found;
};
}

#endif
