#include "cli/commands/Trace.h"

#include "cli/terminal/Message.h"

#include <velk/facade/VelkRouting.h>

#include <QString>

namespace VelkCli {

namespace {

// Qt's own handler may send everything to the system's journal instead.
void printLogged(QtMsgType, const QMessageLogContext &, const QString &message)
{
    printMessage(message);
}
}

void setUpLogging()
{
    qInstallMessageHandler(printLogged);
    Velk::VelkRouting::setTraceEnabled(false);
}
}
