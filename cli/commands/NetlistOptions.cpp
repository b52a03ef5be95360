#include "cli/commands/NetlistOptions.h"

#include "cli/terminal/CommandError.h"

#include <CLI/CLI.hpp>

#include <velk/provider/MultipleEDAProvider.h>
#include <velk/routing/Routing.h>

#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

/// Of a file of this name, if its ending tells.
std::string formatOf(const std::string &fileName)
{
    const QString ending = QFileInfo(toQString(fileName)).suffix().toLower();
    if (ending == u"htm"_s)
        return "html";
    return ending == u"gv"_s ? "dot" : ending.toStdString();
}
}

NetlistOptions::NetlistOptions()
    : connectorTypes{MultipleEDAProvider::DEFAULT_CONNECTOR_COMPONENT_TYPE.toStdString()}
    , switchableTypes{Routing::DEFAULT_SWITCHABLE_COMPONENT_TYPE_RELAY.toStdString(),
                      Routing::DEFAULT_SWITCHABLE_COMPONENT_TYPE_RESISTOR.toStdString()}
    , interfaceTypes{Routing::DEFAULT_INTERFACE_COMPONENT_TYPE_SOURCE.toStdString(),
                     Routing::DEFAULT_INTERFACE_COMPONENT_TYPE_DUT.toStdString()}
{
}

void NetlistOptions::addTo(CLI::App &command, const std::vector<std::string> &formats)
{
    system.fill(addTypesTo(command, "--connector", connectorTypes, "CompType at which boards are joined"),
                [this](const VelkSystemFile &file) { connectorTypes = file.options.connectorTypes; });
    system.fill(addTypesTo(command, "--switchable", switchableTypes, "CompType that a route may pass through"),
                [this](const VelkSystemFile &file) { switchableTypes = file.options.switchableTypes; });
    system.fill(
        addTypesTo(command, "--interface", interfaceTypes, "CompType whose pins a route lists as side connections"),
        [this](const VelkSystemFile &file) { interfaceTypes = file.options.interfaceTypes; });
    system.fill(addTolerantTo(command, tolerant), [this](const VelkSystemFile &file) { tolerant = isTolerant(file); });
    const auto *formatOption =
        command.add_option("--format", format, "Form of the output; without it the name of FILE decides")
            ->check(CLI::IsMember(formats))
            ->type_name("")
            ->capture_default_str();
    if (std::find(formats.cbegin(), formats.cend(), "csv") != formats.cend())
        command.add_flag("--for-spreadsheets", isForSpreadsheets,
                         "In CSV, put an apostrophe before what a spreadsheet would take for a formula");
    addOutputTo(command, outputFile);
    command.parse_complete_callback([this, formatOption, formats] {
        const std::string ending = formatOption->count() == 0 ? formatOf(outputFile) : std::string();
        if (std::find(formats.cbegin(), formats.cend(), ending) != formats.cend())
            format = ending;
    });
    auto *netlists = command.add_option(
        "NETLIST", files,
        "KiCad netlist files, one for each board, in the order of their numbers #1, #2, ...; - is standard input");
    netlists->type_name("");
    system.fill(netlists, [this](const VelkSystemFile &file) { files = file.fileNames; });
    system.addTo(command, {netlists});
}

QStringList NetlistOptions::inputs() const
{
    return toQStringList(files) + system.files();
}

OutputTarget NetlistOptions::target() const
{
    if (isForSpreadsheets && format != "csv")
        throw CommandError{u"--for-spreadsheets: goes with --format csv only"_s};
    return {toQString(outputFile), isForSpreadsheets ? CsvReader::Spreadsheet : CsvReader::Program};
}
}
