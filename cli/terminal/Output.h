#ifndef VELK_CLI_TERMINAL_OUTPUT_H
#define VELK_CLI_TERMINAL_OUTPUT_H

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <functional>

class QIODevice;

namespace VelkCli {

/// Throws a CommandError where \a outputFile is one of \a inputs, or a link to one, or where standard input is several
/// of them.
void checkFiles(const QStringList &inputs, const QString &outputFile);

using Writing = std::function<void(QIODevice &output)>;

/// Gives \a write a device on \a fileName, or on standard output where that is empty. A file is written whole or left
/// as it was, also when the command is interrupted or \a write throws; when writing fails, the rest is dropped. Throws
/// a CommandError then.
/// On a terminal the text, which has to be UTF-8, appears as printable() shows its lines.
void writeOutput(const QString &fileName, const Writing &write);
void writeOutput(const QString &fileName, const QByteArray &bytes);

/// The same for text that is printable() already, but for its colours, which a terminal gets.
void writeText(const QString &fileName, const QByteArray &text);
}

#endif
