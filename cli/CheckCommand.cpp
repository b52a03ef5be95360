#include "cli/CheckCommand.h"

#include "cli/Netlist.h"
#include "cli/Output.h"
#include "cli/TypeWarnings.h"
#include "cli/Warnings.h"
#include "cli/check/ConnectorChecks.h"
#include "cli/check/FileChecks.h"
#include "cli/check/FindingFormats.h"
#include "cli/check/IniChecks.h"
#include "cli/check/NameChecks.h"
#include "cli/check/NetChecks.h"

#include <CLI/CLI.hpp>

#include <algorithm>

using namespace Velk;

namespace VelkCli {

namespace {

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
    addRepeatable(*command, "--ignore", ignored, "Leave out what is found under this code")
        ->check(CLI::IsMember(findingNames()))
        ->type_name("CODE");
    command->add_flag("--all", showsAll, "Show all findings as text, not the first ones of each code only");
    command->footer("Exit status: 0 nothing is found, 1 something is, 2 wrong usage or unreadable input.\n\n" +
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
    refuseToOverwrite(files, toQString(netlist.outputFile));
    const auto unjoined = loadNetlists(files, {}, readingMode(netlist.tolerant));
    printWarnings(typeWarnings(unjoined, netlist, dutTypes));
    const CheckedSystem system(unjoined, static_cast<int>(files.size()), typesOf(netlist, dutTypes));

    auto findings = fileFindings(files) + connectorFindings(system) + netFindings(system) + nameFindings(system) +
                    iniFindings(system);
    findings.removeIf([this](const Finding &finding) { return isIgnored(finding.code); });
    std::stable_sort(findings.begin(), findings.end(),
                     [](const Finding &a, const Finding &b) { return a.code < b.code; });

    const CheckReport report{findings, files, system.componentCount()};
    const QString outputFile = toQString(netlist.outputFile);
    writeOutput(outputFile, netlist.format == "json" ? findingsToJson(report)
                                                     : findingsToText(report, showsAll, Colour::forOutput(outputFile)));
    return findings.isEmpty() ? 0 : 1;
}

bool CheckCommand::isIgnored(FindingCode code) const
{
    return std::find(ignored.cbegin(), ignored.cend(), kindOf(code).name) != ignored.cend();
}
}
