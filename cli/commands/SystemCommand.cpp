#include "cli/commands/SystemCommand.h"

#include "cli/commands/Netlist.h"
#include "cli/commands/SystemFileOptions.h"
#include "cli/terminal/CommandError.h"
#include "cli/terminal/Message.h"
#include "cli/terminal/Output.h"
#include "cli/terminal/Progress.h"

#include <CLI/CLI.hpp>

#include <velk/facade/VelkSystemFile.h>

#include <QFileInfo>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

/// The mode in which all of them can be read: by default, if that is possible. Throws a CommandError if none is.
VelkReadingMode modeFor(const QStringList &fileNames)
try {
    readNetlists(fileNames, KiCadReadingMode::Default);
    return VelkReadingMode::Default;
} catch (const CommandError &error) {
    try {
        readNetlists(fileNames, KiCadReadingMode::Tolerant);
    } catch (const CommandError &) {
        throw error;
    }
    printMessage(u"velk: tolerant = true is written, since %1"_s.arg(error.message));
    return VelkReadingMode::Tolerant;
}
}

SystemCommand::SystemCommand(CLI::App &app)
    : outputFile(usualSystemFile)
    , command(app.add_subcommand("system", "Write the system file, which names the netlists for all commands"))
{
    command->require_subcommand(1);
    command->footer(exampleHeading + "  velk system init -o - examples/demo/instruments.net examples/demo/matrix.net");
    auto *init = command->add_subcommand("init", "Write a system file with these netlists and all that it can say");
    init->add_option("-o,--output", outputFile, "Write this file; - is standard output")
        ->type_name("FILE")
        ->capture_default_str();
    init->add_flag("--force", overwrites, "Write it even where there is such a file");
    init->add_option("NETLIST", netlists,
                     "KiCad netlist files, one for each board, in the order of their numbers #1, #2, ...")
        ->required()
        ->type_name("");
    init->footer(exampleHeading + "  velk system init -o - examples/demo/instruments.net examples/demo/matrix.net");
}

bool SystemCommand::isChosen() const
{
    return command->parsed();
}

void SystemCommand::checkOutput() const
{
    const QString output = toQString(outputFile);
    checkFiles(toQStringList(netlists), output);
    if (!overwrites && QFileInfo(output).isFile())
        throw CommandError{u"%1: there is such a file; --force overwrites it"_s.arg(output)};
}

int SystemCommand::run() const
{
    const QStringList fileNames = toQStringList(netlists);
    if (fileNames.contains(standardStream))
        throw CommandError{u"standard input: has no name that a system file could hold"_s};
    const bool isFile = toQString(outputFile) != standardStream;
    if (isFile)
        checkOutput();

    VelkSystemFile file;
    for (const QString &fileName : fileNames)
        file.fileNames.push_back(fileName.toStdString());
    file.options.readingMode = modeFor(fileNames);
    const QString output = isFile ? toQString(outputFile) : QString();
    const QString folder = QFileInfo(output).path();
    writeOutput(output, QByteArray::fromStdString(file.toToml(folder.toStdString())));
    if (isFile)
        printMessage(u"velk: %1 is written; velk check tells what is probably not as it is meant"_s.arg(output));
    return 0;
}
}
