#include "cli/commands/CheckCommand.h"

#include "cli/commands/Netlist.h"
#include "cli/commands/TypeWarnings.h"
#include "cli/formats/FindingFormats.h"
#include "cli/terminal/Message.h"
#include "cli/terminal/Output.h"
#include "velk/check/ConnectorChecks.h"
#include "velk/check/FileChecks.h"
#include "velk/check/IgnoredFindings.h"
#include "velk/check/IniChecks.h"
#include "velk/check/NameChecks.h"
#include "velk/check/NetChecks.h"
#include "velk/check/SwappedPins.h"

#include <CLI/CLI.hpp>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

/// "CODE" or "CODE:NAME".
CLI::Validator ignorableValidator()
{
    const CLI::IsMember isCode(findingNames());
    const auto check = [isCode](const std::string &text) {
        const auto colon = text.find(':');
        if (colon != std::string::npos && colon + 1 == text.size())
            return "expected a name behind " + text;
        return isCode(text.substr(0, colon));
    };
    return {check, isCode.get_description()};
}

ComponentTypes typesOf(const NetlistOptions &options, const std::vector<std::string> &dutTypes)
{
    return {toQStringList(options.connectorTypes), toQStringList(options.switchableTypes),
            toQStringList(options.interfaceTypes), toQStringList(dutTypes)};
}
}

CheckCommand::CheckCommand(CLI::App &app)
    : command(app.add_subcommand("check", "Look for what is probably not as it is meant"))
{
    netlist.addTo(*command, {"text", "json"});
    addDutTypeTo(*command, dutTypes);
    addRepeatable(*command, "--ignore", ignored, "Leave out what is found under this code, see below")
        ->check(ignorableValidator())
        ->type_name("CODE");
    command->add_flag("--all", showsAll, "Show all findings as text, not the first ones of each code only");
    command->footer(
        "--ignore CODE:NAME leaves out what is found at one component or net, as in --ignore "
        "pin-alone-on-net:K7. NAME is that of the finding, with its #n or, for all boards, without; '*' in it "
        "stands for any text, '?' for any character. What is found at several that belong together, "
        "as joined nets, goes when all of them are left out.\n\n"
        "Exit status: 0 nothing is found, 1 something is, 2 wrong usage or unreadable input.\n\n" +
        exampleHeading +
        "  velk check examples/demo/instruments.net examples/demo/matrix.net examples/demo/adapter.net");
}

bool CheckCommand::isChosen() const
{
    return command->parsed();
}

int CheckCommand::run() const
{
    const QStringList files = toQStringList(netlist.files);
    checkFiles(files, toQString(netlist.outputFile));
    auto netlists = readNetlists(files, readingMode(netlist.tolerant));
    auto findings = fileFindings(files) + repetitionFindings(files, netlists);
    const auto unjoined = joined(netlists, {});
    netlists.clear();
    printWarnings(typeWarnings(unjoined, netlist, dutTypes));
    const CheckedSystem system(unjoined, static_cast<int>(files.size()), typesOf(netlist, dutTypes));

    findings += connectorFindings(system) + swappedPinFindings(system) + netFindings(system) + nameFindings(system) +
                iniFindings(system);
    IgnoredFindings ignoredFindings(toQStringList(ignored));
    ignoredFindings.removeFrom(findings);
    for (const QString &note : ignoredFindings.notes(findings))
        printMessage(u"velk: "_s + note);
    std::stable_sort(findings.begin(), findings.end(),
                     [](const Finding &a, const Finding &b) { return a.code < b.code; });

    const CheckReport report{gathered(findings), shownNames(files), system.componentCount()};
    const QString outputFile = toQString(netlist.outputFile);
    if (netlist.format == "json")
        writeOutput(outputFile, findingsToJson(report));
    else
        writeText(outputFile, findingsToText(report, showsAll, Colour::forOutput(outputFile)));
    return findings.isEmpty() ? 0 : 1;
}
}
