// Writes the manual page of the command to the file that is its argument.
#include "cli/CommandLine.h"
#include "cli/manual/ManualPage.h"
#include "cli/terminal/CommandError.h"
#include "cli/terminal/Message.h"
#include "cli/terminal/Output.h"

using namespace Qt::StringLiterals;
using namespace VelkCli;

int main(int argc, char **argv)
{
    if (argc != 2) {
        printMessage(u"velk-manual: expected a file"_s);
        return exitFailure;
    }
    try {
        const auto command = describe(CommandLine().definitions());
        writeOutput(QString::fromLocal8Bit(argv[1]), manualPage(command).toUtf8());
        return 0;
    } catch (const CommandError &error) {
        printMessage(u"velk-manual: "_s + error.message);
        return exitFailure;
    }
}
