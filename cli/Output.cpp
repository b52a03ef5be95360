#include "cli/Output.h"

#include "cli/CommandError.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace VelkCli {

namespace {

CommandError notWritten(const QString &fileName, const QFileDevice &file)
{
    // A write that is cut short leaves no error behind.
    const QString reason =
        file.error() == QFileDevice::NoError ? u"not all of it could be written"_s : file.errorString();
    return CommandError{u"%1: cannot be written: %2"_s.arg(fileName, reason)};
}

void writeStandardOutput(const QByteArray &bytes)
{
    QFile output;
    if (!output.open(stdout, QIODevice::WriteOnly) || output.write(bytes) != bytes.size() || !output.flush())
        throw notWritten(u"standard output"_s, output);
}

// A device or pipe cannot be replaced by a new file of its name.
void writeSpecialFile(const QString &fileName, const QByteArray &bytes)
{
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush())
        throw notWritten(fileName, file);
}

void replaceFile(const QString &fileName, const QByteArray &bytes)
{
    QSaveFile file(fileName); // its commit() alone does not notice a full disk, flush() does
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush() || !file.commit())
        throw notWritten(fileName, file);
}
}

void writeOutput(const QString &fileName, const QByteArray &bytes)
{
    const QFileInfo info(fileName);
    if (fileName.isEmpty())
        writeStandardOutput(bytes);
    else if (info.exists() && !info.isFile() && !info.isDir())
        writeSpecialFile(fileName, bytes);
    else
        replaceFile(fileName, bytes);
}
}
