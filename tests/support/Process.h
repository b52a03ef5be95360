#ifndef VELK_TESTS_PROCESS_H
#define VELK_TESTS_PROCESS_H

#include <QFile>
#include <QProcess>
#include <QStringList>

struct Result
{
    int status;
    QString output;
    QString errors;
};

inline Result run(const QString &program, const QStringList &arguments,
                  const QString &folder = QStringLiteral(VELK_SOURCE_DIR))
{
    QProcess process;
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("*.debug=true")); // must not wake the trace
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(folder);
    process.start(program, arguments);
    if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit)
        return {-1, {}, QStringLiteral("the command crashed or hangs")};
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

inline QByteArray bytesOf(const QString &fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

inline QString read(const QString &fileName)
{
    return QString::fromUtf8(bytesOf(fileName));
}

inline void write(const QString &fileName, const QByteArray &bytes)
{
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush())
        qFatal("cannot write %s", qPrintable(fileName));
}

inline void write(const QString &fileName, const QString &text)
{
    write(fileName, text.toUtf8());
}

#endif
