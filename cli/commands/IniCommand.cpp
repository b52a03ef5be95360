#include "cli/commands/IniCommand.h"

#include "cli/commands/IniWarnings.h"
#include "cli/commands/Netlist.h"
#include "cli/terminal/CommandError.h"
#include "cli/terminal/Message.h"
#include "cli/terminal/Output.h"

#include <CLI/CLI.hpp>

#include <velk/ini/EDAApplicationIniGenerator.h>
#include <velk/ini/EDAPhysicalIniGenerator.h>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

/// The name given, or the files as they were given.
QString netName(const std::string &name, const std::vector<std::string> &files)
{
    return name.empty() ? shownNames(toQStringList(files)).join(u", "_s) : toQString(name);
}
}

IniCommand::IniCommand(CLI::App &app)
    : command(app.add_subcommand("ini", "Write the INI files of the test system's resource manager"))
    , physical(command->add_subcommand("physical", "Write the physical INI: every device with its properties"))
    , application(command->add_subcommand("application", "Write the application INI: benches and channel tables"))
{
    command->require_subcommand(1);
    command->footer(exampleHeading + "  velk ini physical examples/demo/instruments.net");
    addPhysical();
    addApplication();
}

void IniCommand::addPhysical()
{
    addTolerantTo(*physical, tolerant);
    addTypesTo(*physical, "--type", types, EDAPhysicalIniGenerator::DEFAULT_SOURCE_COMPONENT_TYPE,
               "CompType that is a device");
    addOutputTo(*physical, outputFile);
    physical
        ->add_option("NETLIST", netlists,
                     "KiCad netlist files; the references of several carry their numbers #1, #2, ...")
        ->required()
        ->type_name("");
    physical->footer(exampleHeading + "  velk ini physical examples/demo/instruments.net");
}

void IniCommand::addApplication()
{
    application
        ->add_option("--test-system", testSystemFiles,
                     "KiCad netlist files with the sources; the references of several carry their numbers")
        ->required()
        ->type_name("NETLIST");
    application
        ->add_option("--application", applicationFiles,
                     "KiCad netlist files with the DUTs; the references of several carry their numbers")
        ->required()
        ->type_name("NETLIST");
    addTolerantTo(*application, tolerant);
    addDutTypeTo(*application, dutTypes);
    application->add_option("--test-system-name", testSystemName,
                            "Text for TestSystemEdaNet instead of the file names");
    application->add_option("--application-name", applicationName,
                            "Text for ApplicationEdaNet instead of the file names");
    addOutputTo(*application, outputFile);
    application->footer(exampleHeading + "  velk ini application --test-system examples/demo/instruments.net \\\n"
                                         "    --application examples/demo/adapter.net");
}

bool IniCommand::isChosen() const
{
    return command->parsed();
}

int IniCommand::run() const
{
    return physical->parsed() ? runPhysical() : runApplication();
}

int IniCommand::runPhysical() const
{
    checkFiles(toQStringList(netlists), toQString(outputFile));
    const auto netlist = loadOneOrJoin(toQStringList(netlists), readingMode(tolerant));
    EDAPhysicalIniGenerator generator(netlist.get());
    generator.setComponentTypesThatAreExported(toQStringList(types));
    printWarnings(deviceWarnings(generator, toQStringList(types)));
    writeOutput(toQString(outputFile), [&](QIODevice &output) {
        generator.generate(&output);
        printWarnings(generator.warnings());
    });
    return 0;
}

int IniCommand::runApplication() const
{
    checkFiles(toQStringList(testSystemFiles) + toQStringList(applicationFiles), toQString(outputFile));
    const auto testSystem = loadOneOrJoin(toQStringList(testSystemFiles), readingMode(tolerant));
    const auto duts = loadOneOrJoin(toQStringList(applicationFiles), readingMode(tolerant));
    EDAApplicationIniGenerator generator(testSystem.get(), duts.get());
    generator.setComponentTypesDut(toQStringList(dutTypes));
    if (const QString oversize = generator.oversize(); !oversize.isEmpty())
        throw CommandError{oversize};
    printWarnings(dutWarnings(generator, toQStringList(dutTypes)));
    printWarnings(sourceWarnings(generator));

    const QString testSystemEdaNet = netName(testSystemName, testSystemFiles);
    const QString applicationEdaNet = netName(applicationName, applicationFiles);
    writeOutput(toQString(outputFile), [&](QIODevice &output) {
        generator.generate(&output, testSystemEdaNet, applicationEdaNet);
        printWarnings(generator.warnings(testSystemEdaNet, applicationEdaNet));
    });
    return 0;
}
}
