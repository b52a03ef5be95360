#ifndef VELKINI_INIWRITER_H
#define VELKINI_INIWRITER_H

#include <velkini/VelkIniExport.h>

#include <QList>
#include <QString>

class QIODevice;

namespace Velk {

/// Writes an INI file to a device, entry after entry:
///
///     ; a comment
///     [section]
///     key=value
///
/// The text is UTF-8 with a line feed after each line and an empty line before each section but the first
/// thing in the file. No text that is handed over can forge structure: control characters become `\n`, `\r`, `\t`,
/// `\0` or `\xNN`; in a key "=" becomes `\=` and a leading "[", ";" or "#" gets a backslash; in a section name "]"
/// becomes `\]`. All else stands as it is, backslashes too.
///
/// Failures of the device are not reported here; ask the device.
class VELKINI_EXPORT IniWriter
{
public:
    /// \a output stays the caller's and must outlive the writer.
    explicit IniWriter(QIODevice *output);
    /// As close(), so that an exception leaves no device open either. So leave closing to the writer.
    ~IniWriter();
    IniWriter(const IniWriter &) = delete;
    IniWriter &operator=(const IniWriter &) = delete;

    /// Opens the device write-only in text mode, without what it held before, unless it is open already: then the text
    /// is appended. False if it cannot be written to; what is written all the same is lost. Open a QSaveFile yourself,
    /// since it cannot be closed.
    bool open();

    /// Begins a section. Each item of \a comments becomes a comment line before it.
    void writeSection(const QString &name, const QList<QString> &comments);
    /// Writes an entry of the current section. Each item of \a comments becomes a comment line before it.
    void writeProperty(const QString &key, const QString &value, const QList<QString> &comments);
    /// Writes a comment line.
    void writeComment(const QString &text);

    /// Closes the device if open() has opened it.
    void close();

    /// The version of this library at run time: "1.0.0".
    static QString version();

private:
    VELKINI_NO_EXPORT void writeLine(const QString &line);
    VELKINI_NO_EXPORT void writeComments(const QList<QString> &comments);

    QIODevice *device;
    bool openedDevice = false;
    bool atStart = true;
};
}

#endif
