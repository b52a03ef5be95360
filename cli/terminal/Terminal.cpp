#include "cli/terminal/Terminal.h"

#include <QByteArray>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;

namespace VelkCli {

namespace {

/// True for what steers a terminal, and for what turns the direction of the text that follows.
bool isSteering(QChar c)
{
    switch (c.direction()) {
    case QChar::DirLRE:
    case QChar::DirLRO:
    case QChar::DirRLE:
    case QChar::DirRLO:
    case QChar::DirPDF:
    case QChar::DirLRI:
    case QChar::DirRLI:
    case QChar::DirFSI:
    case QChar::DirPDI:
        return true;
    default:
        return c.category() == QChar::Other_Control && c != u'\t';
    }
}

QString escaped(QChar c)
{
    const QString digits = QString::number(c.unicode(), 16).toUpper();
    return c.unicode() < 0x100 ? u"\\x"_s + digits.rightJustified(2, u'0') : u"\\u"_s + digits.rightJustified(4, u'0');
}
}

QString printable(const QString &text)
{
    QString result;
    result.reserve(text.size());
    for (const QChar c : text) {
        if (isSteering(c))
            result += escaped(c);
        else
            result += c;
    }
    return result;
}

bool isTerminal(int descriptor)
{
#ifdef Q_OS_UNIX
    return isatty(descriptor) != 0;
#else
    Q_UNUSED(descriptor)
    return false;
#endif
}

bool takesControlSequences(std::FILE *stream)
{
#ifdef Q_OS_UNIX
    const QByteArray kind = qgetenv("TERM");
    return isTerminal(fileno(stream)) && !kind.isEmpty() && kind != "dumb";
#else
    Q_UNUSED(stream)
    return false;
#endif
}
}
