#include "cli/terminal/Output.h"

#include "cli/terminal/CommandError.h"
#include "cli/terminal/Progress.h"
#include "cli/terminal/Terminal.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStringDecoder>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <iterator>

using namespace Qt::StringLiterals;

namespace VelkCli {

namespace {

enum class Content
{
    Any,
    Printable
};

CommandError notWritten(const QString &fileName, const QFileDevice &file)
{
    // A write that is cut short leaves no error behind.
    const QString reason =
        file.error() == QFileDevice::NoError ? u"not all of it could be written"_s : file.errorString();
    return CommandError{u"%1: cannot be written: %2"_s.arg(fileName, reason)};
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
        for (const int number : numbers) {
            if (!isIgnored(number)) // it would wait like the others
                sigaddset(&signalSet, number);
        }
        sigprocmask(SIG_BLOCK, &signalSet, &before);
    }
    ~SignalsHeldBack()
    {
        sigprocmask(SIG_SETMASK, &before, nullptr);
    }

    bool oneWaits() const
    {
        sigset_t waiting;
        sigpending(&waiting);
        return std::any_of(std::begin(numbers), std::end(numbers),
                           [&](int number) { return sigismember(&waiting, number) == 1; });
    }

private:
    static bool isIgnored(int number)
    {
        struct sigaction action = {};
        sigaction(number, nullptr, &action);
        return action.sa_handler == SIG_IGN;
    }

    static constexpr int numbers[] = {SIGINT, SIGTERM, SIGHUP};
    sigset_t before{};
#else
    SignalsHeldBack() = default;
    bool oneWaits() const
    {
        return false;
    }
#endif
    Q_DISABLE_COPY_MOVE(SignalsHeldBack)
};

/// Passes on what is written, up to what cannot be.
class CheckedOutput : public QIODevice
{
public:
    explicit CheckedOutput(QFileDevice &target, const SignalsHeldBack *signalsHeldBack = nullptr)
        : file(target)
        , heldBack(signalsHeldBack)
    {
        open(QIODevice::WriteOnly);
    }

    bool isWhole() const { return whole; }

protected:
    qint64 readData(char *, qint64) override { return -1; }

    qint64 writeData(const char *data, qint64 size) override
    {
        const bool interrupted = heldBack != nullptr && heldBack->oneWaits();
        whole = whole && !interrupted && file.write(data, size) == size;
        return whole ? size : -1;
    }

private:
    QFileDevice &file;
    const SignalsHeldBack *heldBack;
    bool whole = true;
};

/// Passes on what a terminal may be shown of UTF-8.
class PrintableOutput : public QIODevice
{
public:
    explicit PrintableOutput(QIODevice &target)
        : output(target)
    {
        open(QIODevice::WriteOnly);
    }

protected:
    qint64 readData(char *, qint64) override { return -1; }

    qint64 writeData(const char *data, qint64 size) override
    {
        const QString text = decode(QByteArray::fromRawData(data, size));
        QStringList lines = text.split(u'\n');
        for (QString &line : lines)
            line = printable(line);
        return output.write(lines.join(u'\n').toUtf8()) < 0 ? -1 : size;
    }

private:
    QIODevice &output;
    QStringDecoder decode{QStringDecoder::Utf8}; // what is written may end within a character
};

bool writeWhole(CheckedOutput &output, QFileDevice &file, const Writing &write, Content content)
{
    if (content == Content::Any && isTerminal(file.handle())) {
        PrintableOutput shown(output);
        write(shown);
    } else {
        write(output);
    }
    return output.isWhole() && file.flush();
}

void writeStandardOutput(const Writing &write, Content content)
{
    QFile file;
    CheckedOutput output(file);
    if (!file.open(stdout, QIODevice::WriteOnly) || !writeWhole(output, file, write, content))
        throw notWritten(u"standard output"_s, file);
}

// A device or pipe cannot be replaced by a new file of its name.
void writeSpecialFile(const QString &fileName, const Writing &write, Content content)
{
    QFile file(fileName);
    CheckedOutput output(file);
    if (!file.open(QIODevice::WriteOnly) || !writeWhole(output, file, write, content))
        throw notWritten(fileName, file);
}

void replaceFile(const QString &fileName, const Writing &write, Content content)
{
    const SignalsHeldBack heldBack; // lets them in when the temporary file is gone
    QSaveFile file(fileName);       // its commit() alone does not notice a full disk, flush() does
    CheckedOutput output(file, &heldBack);
    if (!file.open(QIODevice::WriteOnly) || !writeWhole(output, file, write, content) || !file.commit())
        throw notWritten(fileName, file);
}

void writeAnywhere(const QString &fileName, const Writing &write, Content content)
{
    Progress::end();
    const QFileInfo info(fileName);
    if (fileName.isEmpty())
        writeStandardOutput(write, content);
    else if (info.exists() && !info.isFile() && !info.isDir())
        writeSpecialFile(fileName, write, content);
    else
        replaceFile(fileName, write, content);
}
}

void checkFiles(const QStringList &inputs, const QString &outputFile)
{
    if (inputs.count(standardStream.toString()) > 1)
        throw CommandError{u"standard input: can be one of the files only"_s};
    const QFileInfo output(outputFile);
    if (!output.isFile())
        return;
    for (const QString &input : inputs) {
        if (QFileInfo(input).canonicalFilePath() == output.canonicalFilePath())
            throw CommandError{u"%1: is a file that is read; it would be overwritten"_s.arg(outputFile)};
    }
}

void writeOutput(const QString &fileName, const Writing &write)
{
    writeAnywhere(fileName, write, Content::Any);
}

void writeOutput(const QString &fileName, const QByteArray &bytes)
{
    writeOutput(fileName, [&](QIODevice &output) { output.write(bytes); });
}

void writeText(const QString &fileName, const QByteArray &text)
{
    writeAnywhere(
        fileName, [&](QIODevice &output) { output.write(text); }, Content::Printable);
}
}
