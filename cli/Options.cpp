#include "cli/Options.h"

#include "cli/CommandError.h"

#include <CLI/CLI.hpp>

#include <velk/ini/EDAApplicationIniGenerator.h>
#include <velk/provider/MultipleEDAProvider.h>
#include <velk/routing/Routing.h>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

const std::string exampleHeading = "Example, from the source folder:\n";
const std::string exitStatusHeading = "Exit status:\n";

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
    addRepeatable(command, "--connector", connectorTypes, "CompType at which boards are joined")
        ->type_name("TYPE")
        ->capture_default_str();
    addRepeatable(command, "--switchable", switchableTypes, "CompType that a route may pass through")
        ->type_name("TYPE")
        ->capture_default_str();
    addRepeatable(command, "--interface", interfaceTypes, "CompType whose pins a route lists as side connections")
        ->type_name("TYPE")
        ->capture_default_str();
    addTolerantTo(command, tolerant);
    command.add_option("--format", format, "Form of the output")
        ->check(CLI::IsMember(formats))
        ->type_name("")
        ->capture_default_str();
    command.add_option("-o,--output", outputFile, "Write to this file instead of standard output")->type_name("FILE");
    command
        .add_option("NETLIST", files,
                    "KiCad netlist files, one for each board, in the order of their numbers #1, #2, ...")
        ->required()
        ->type_name("");
}

CLI::Option *addRepeatable(CLI::App &command, const std::string &name, std::vector<std::string> &values,
                           const std::string &description)
{
    return command.add_option(name, values, description)->allow_extra_args(false);
}

void addTypesTo(CLI::App &command, const std::string &name, std::vector<std::string> &types, const QString &defaultType,
                const std::string &description)
{
    types = {defaultType.toStdString()};
    addRepeatable(command, name, types, description)->type_name("TYPE")->capture_default_str();
}

void addDutTypeTo(CLI::App &command, std::vector<std::string> &types)
{
    addTypesTo(command, "--dut-type", types, EDAApplicationIniGenerator::DEFAULT_DUT_COMPONENT_TYPE,
               "CompType that is a DUT");
}

void addTolerantTo(CLI::App &command, bool &tolerant)
{
    command.add_flag("--tolerant", tolerant,
                     "Read whatever KiCad 4 to 10 write; what had to be completed is a warning");
}

KiCadReadingMode readingMode(bool tolerant)
{
    return tolerant ? KiCadReadingMode::Tolerant : KiCadReadingMode::Default;
}

std::vector<std::string> guarded(int argc, char **argv)
{
    std::vector<std::string> arguments;
    for (int i = argc - 1; i > 0; --i) {
        std::string argument = argv[i];
        if (!argument.empty() && (argument.front() == '[' || argument.front() == bracketGuard))
            argument.insert(argument.begin(), static_cast<char>(bracketGuard));
        arguments.push_back(argument);
    }
    return arguments;
}

QString toQString(const std::string &text)
{
    const QString result = QString::fromStdString(text);
    return result.startsWith(bracketGuard) ? result.mid(1) : result;
}

QStringList toQStringList(const std::vector<std::string> &texts)
{
    QStringList result;
    for (const auto &text : texts)
        result.append(toQString(text));
    return result;
}

QMap<QString, QString> parseProperties(const QString &option, const std::vector<std::string> &texts)
{
    QMap<QString, QString> properties;
    for (const QString &text : toQStringList(texts)) {
        const qsizetype sign = text.indexOf(u'=');
        if (sign <= 0)
            throw CommandError{u"%1 %2: expected KEY=VALUE"_s.arg(option, text)};
        const QString key = text.left(sign);
        const QString value = text.mid(sign + 1);
        if (properties.value(key, value) != value)
            throw CommandError{u"%1 %2: %3 has another value already, and both have to match"_s.arg(option, text, key)};
        properties.insert(key, value);
    }
    return properties;
}
}
