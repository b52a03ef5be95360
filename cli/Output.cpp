#include "cli/Output.h"

#include "cli/CommandError.h"
#include "cli/Progress.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <csignal>
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

/// Keeps requests to end the program waiting, since they would leave a temporary file behind.
class SignalsHeldBack
{
public:
#ifdef Q_OS_UNIX
    SignalsHeldBack()
    {
        sigset_t signalSet;
        sigemptyset(&signalSet);
        for (const int number : {SIGINT, SIGTERM, SIGHUP})
            sigaddset(&signalSet, number);
        sigprocmask(SIG_BLOCK, &signalSet, &before);
    }
    ~SignalsHeldBack()
    {
        sigprocmask(SIG_SETMASK, &before, nullptr);
    }

private:
    sigset_t before{};
#else
    SignalsHeldBack() = default;
#endif
    Q_DISABLE_COPY_MOVE(SignalsHeldBack)
};

void replaceFile(const QString &fileName, const QByteArray &bytes)
{
    const SignalsHeldBack heldBack;
    QSaveFile file(fileName); // its commit() alone does not notice a full disk, flush() does
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush() || !file.commit())
        throw notWritten(fileName, file);
}
}

void refuseToOverwrite(const QStringList &inputs, const QString &fileName)
{
    const QFileInfo output(fileName);
    if (!output.isFile())
        return;
    for (const QString &input : inputs) {
        if (QFileInfo(input).canonicalFilePath() == output.canonicalFilePath())
            throw CommandError{u"%1: is a netlist that is read; it would be overwritten"_s.arg(fileName)};
    }
}

void writeOutput(const QString &fileName, const QByteArray &bytes)
{
    Progress::end();
    const QFileInfo info(fileName);
    if (fileName.isEmpty())
        writeStandardOutput(bytes);
    else if (info.exists() && !info.isFile() && !info.isDir())
        writeSpecialFile(fileName, bytes);
    else
        replaceFile(fileName, bytes);
}
}
