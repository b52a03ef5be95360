#include "cli/Message.h"

#include "cli/Progress.h"

#include <cstdio>

using namespace Qt::StringLiterals;

namespace VelkCli {

QString printable(const QString &text)
{
    QString result;
    result.reserve(text.size());
    for (const QChar c : text) {
        if (c.category() == QChar::Other_Control && c != u'\t')
            result += u"\\x%1"_s.arg(QString::number(c.unicode(), 16).toUpper().rightJustified(2, u'0'));
        else
            result += c;
    }
    return result;
}

void printMessage(const QString &line)
{
    const Progress::Hidden hidden;
    std::fprintf(stderr, "%s\n", qUtf8Printable(printable(line)));
}
}
