#include "cli/terminal/Message.h"

#include "cli/terminal/Progress.h"
#include "cli/terminal/Terminal.h"

#include <QMap>
#include <QRegularExpression>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace VelkCli {

namespace {

/// What a warning says, without the place and the names.
QString kindOf(const QString &warning)
{
    static const QRegularExpression name(u"'[^']*'"_s);
    return warning.mid(warning.lastIndexOf(u": "_s) + 2).replace(name, u"'...'"_s);
}

void print(const QString &warning)
{
    printMessage(u"velk: warning: "_s + warning);
}
}

void printMessage(const QString &line)
{
    const Progress::Hidden hidden;
    std::fprintf(stderr, "%s\n", qUtf8Printable(printable(line)));
}

void printWarnings(const QStringList &warnings)
{
    constexpr int mostOfAKind = 10;
    QMap<QString, int> counts;
    for (const QString &warning : warnings) {
        if (++counts[kindOf(warning)] <= mostOfAKind)
            print(warning);
    }
    for (auto kind = counts.cbegin(); kind != counts.cend(); ++kind) {
        if (kind.value() > mostOfAKind)
            print(u"%1 more: %2"_s.arg(QString::number(kind.value() - mostOfAKind), kind.key()));
    }
}
}
