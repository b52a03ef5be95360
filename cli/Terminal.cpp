#include "cli/Terminal.h"

#include <QByteArray>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

namespace VelkCli {

bool isTerminal(std::FILE *stream)
{
#ifdef Q_OS_UNIX
    const QByteArray kind = qgetenv("TERM");
    return isatty(fileno(stream)) != 0 && !kind.isEmpty() && kind != "dumb";
#else
    Q_UNUSED(stream)
    return false;
#endif
}
}
