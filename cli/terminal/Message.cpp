#include "cli/terminal/Message.h"

#include "cli/terminal/Progress.h"
#include "cli/terminal/Terminal.h"

#include <cstdio>

namespace VelkCli {

void printMessage(const QString &line)
{
    const Progress::Hidden hidden;
    std::fprintf(stderr, "%s\n", qUtf8Printable(printable(line)));
}
}
