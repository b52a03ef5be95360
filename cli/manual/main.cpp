// Writes the manual page and the completions of the command into the folder that is its argument.
#include "cli/CommandLine.h"
#include "cli/manual/Completions.h"
#include "cli/manual/ManualPage.h"
#include "cli/terminal/CommandError.h"
#include "cli/terminal/Message.h"
#include "cli/terminal/Output.h"

using namespace Qt::StringLiterals;
using namespace VelkCli;

namespace {

void writeManual(const QString &folder)
{
    const CommandLine commandLine;
    const auto command = describe(commandLine.definitions());
    const std::pair<QString, QString> files[] = {{u"velk.1"_s, manualPage(command)},
                                                 {u"velk.bash"_s, bashCompletion(command)},
                                                 {u"_velk"_s, zshCompletion(command)},
                                                 {u"velk.fish"_s, fishCompletion(command)}};
    for (const auto &[name, text] : files)
        writeOutput(folder + u'/' + name, text.toUtf8());
}
}

int main(int argc, char **argv)
{
    if (argc != 2) {
        printMessage(u"velk-manual: expected a folder"_s);
        return exitFailure;
    }
    try {
        writeManual(QString::fromLocal8Bit(argv[1]));
        return 0;
    } catch (const CommandError &error) {
        printMessage(u"velk-manual: "_s + error.message);
        return exitFailure;
    }
}
