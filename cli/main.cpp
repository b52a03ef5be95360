#include "cli/CommandLine.h"
#include "cli/commands/Trace.h"
#include "cli/terminal/CommandError.h"
#include "cli/terminal/Message.h"

#include <exception>

using namespace Qt::StringLiterals;
using namespace VelkCli;

int main(int argc, char **argv)
{
    try {
        setUpLogging();
        return CommandLine().run(argc, argv);
    } catch (const CommandError &error) {
        printMessage(u"velk: "_s + error.message);
    } catch (const std::exception &exception) {
        printMessage(u"velk: "_s + QString::fromUtf8(exception.what()));
    }
    return exitFailure;
}
