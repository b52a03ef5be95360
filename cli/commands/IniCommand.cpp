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
    : connectorTypes{MultipleEDAProvider::DEFAULT_CONNECTOR_COMPONENT_TYPE.toStdString()}
    , command(app.add_subcommand("ini", "Write the INI files of the test system's resource manager"))
    , physical(command->add_subcommand("physical", "Write the physical INI: every device with its properties"))
    , application(command->add_subcommand("application", "Write the application INI: benches and channel tables"))
{
    command->require_subcommand(1);
    command->footer(exampleHeading + "  velk ini physical examples/demo/instruments.net");
    addPhysical();
    addApplication();
}

void IniCommand::addReading(CLI::App &subcommand, SystemFileOptions &system)
{
    system.fill(addTolerantTo(subcommand, tolerant),
                [this](const VelkSystemFile &file) { tolerant = isTolerant(file); });
    system.add([this](const VelkSystemFile &file) { connectorTypes = file.options.connectorTypes; });
    subcommand.callback([&system] { system.take(); });
}

void IniCommand::addPhysical()
{
    addReading(*physical, physicalSystem);
    types = {EDAPhysicalIniGenerator::DEFAULT_SOURCE_COMPONENT_TYPE.toStdString()};
    physicalSystem.fill(addTypesTo(*physical, "--type", types, "CompType that is a device"),
                        [this](const VelkSystemFile &file) { types = file.options.deviceTypes; });
    addOutputTo(*physical, outputFile);
    auto *files = physical->add_option(
        "NETLIST", netlists, "KiCad netlist files; the references of several carry their numbers #1, #2, ...");
    files->type_name("");
    physicalSystem.fill(files, [this](const VelkSystemFile &file) { netlists = file.fileNames; });
    physicalSystem.addTo(*physical, {files});
    physical->footer(exampleHeading + "  velk ini physical examples/demo/instruments.net");
}

void IniCommand::addApplication()
{
    auto *sources =
        application->add_option("--test-system", testSystemFiles,
                                "KiCad netlist files with the sources; the references of several carry their numbers");
    sources->type_name("NETLIST");
    applicationSystem.fill(sources, [this](const VelkSystemFile &file) { testSystemFiles = file.fileNames; });
    auto *duts =
        application->add_option("--application", applicationFiles,
                                "KiCad netlist files with the DUTs; the references of several carry their numbers");
    duts->type_name("NETLIST");
    applicationSystem.fill(duts, [this](const VelkSystemFile &file) { applicationFiles = file.fileNames; });
    applicationSystem.addTo(*application, {sources, duts});
    addReading(*application, applicationSystem);
    applicationSystem.fill(addDutTypeTo(*application, dutTypes),
                           [this](const VelkSystemFile &file) { dutTypes = file.options.dutTypes; });
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

std::shared_ptr<EDAProvider> IniCommand::load(const std::vector<std::string> &files) const
{
    return loadOneOrJoin(toQStringList(files), toQStringList(connectorTypes), readingMode(tolerant));
}

int IniCommand::runPhysical() const
{
    checkFiles(toQStringList(netlists) + physicalSystem.files(), toQString(outputFile));
    const auto netlist = load(netlists);
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
    checkFiles(toQStringList(testSystemFiles) + toQStringList(applicationFiles) + applicationSystem.files(),
               toQString(outputFile));
    const auto testSystem = load(testSystemFiles);
    const auto duts = load(applicationFiles);
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
