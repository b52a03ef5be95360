#include "cli/Trace.h"

#include <velk/facade/VelkRouting.h>

#include <QString>

#include <cstdio>

namespace VelkCli {

namespace {

// Qt's own handler may send everything to the system's journal instead.
void printMessage(QtMsgType, const QMessageLogContext &, const QString &message)
{
    std::fprintf(stderr, "%s\n", qUtf8Printable(message));
}
}

void setUpLogging()
{
    qInstallMessageHandler(printMessage);
    Velk::VelkRouting::setTraceEnabled(false);
}
}
