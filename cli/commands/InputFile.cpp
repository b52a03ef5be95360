#include "cli/commands/InputFile.h"

#include "cli/commands/Netlist.h"
#include "cli/terminal/CommandError.h"
#include "cli/terminal/Progress.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace VelkCli {

QByteArray readInput(const QString &fileName)
{
    QFile file(fileName);
    const bool isOpen =
        fileName == standardStream ? file.open(stdin, QIODevice::ReadOnly) : file.open(QIODevice::ReadOnly);
    QByteArray bytes = isOpen ? file.readAll() : QByteArray();
    if (file.error() != QFileDevice::NoError)
        throw CommandError{u"%1: %2"_s.arg(shownName(fileName), file.errorString())};
    return bytes;
}
}
