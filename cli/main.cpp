#include "cli/CommandLine.h"
#include "cli/terminal/CommandError.h"
#include "cli/terminal/Message.h"

#include <velk/facade/VelkRouting.h>
#include <velk/model/EDAException.h>

#include <exception>

using namespace Qt::StringLiterals;
using namespace VelkCli;

namespace {

// Qt's own handler may send everything to the system's journal instead.
void printLogged(QtMsgType, const QMessageLogContext &, const QString &message)
{
    printMessage(message);
}
}

int main(int argc, char **argv)
{
    try {
        qInstallMessageHandler(printLogged);
        Velk::VelkRouting::setTraceEnabled(false); // whatever the environment's logging rules say
        return CommandLine().run(argc, argv);
    } catch (const CommandError &error) {
        printMessage(u"velk: "_s + error.message);
    } catch (const Velk::EDAException &exception) {
        printMessage(u"velk: "_s + exception.message());
    } catch (const std::exception &exception) {
        printMessage(u"velk: "_s + QString::fromUtf8(exception.what()));
    }
    return exitFailure;
}
