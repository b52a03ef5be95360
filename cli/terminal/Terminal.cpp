#include "cli/terminal/Terminal.h"

#include <QByteArray>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

namespace VelkCli {

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
