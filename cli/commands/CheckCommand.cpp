#include "cli/commands/CheckCommand.h"

#include "cli/commands/Netlist.h"
#include "cli/commands/TypeWarnings.h"
#include "cli/formats/FindingFormats.h"
#include "cli/terminal/Message.h"
#include "cli/terminal/Output.h"

#include <CLI/CLI.hpp>

#include <velk/check/SystemCheck.h>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

/// "CODE" or "CODE:NAME".
CLI::Validator ignorableValidator()
{
    std::vector<std::string> codes;
    for (const QString &name : Finding::names())
        codes.push_back(name.toStdString());
    const CLI::IsMember isCode(codes);
    const auto check = [isCode](const std::string &text) {
        const auto colon = text.find(':');
        if (colon != std::string::npos && colon + 1 == text.size())
            return "expected a name behind " + text;
        return isCode(text.substr(0, colon));
    };
    return {check, isCode.get_description()};
}
}

CheckCommand::CheckCommand(CLI::App &app)
    : command(app.add_subcommand("check", "Look for what is probably not as it is meant"))
{
    netlist.addTo(*command, formatNames(findingFormats()));
    command->callback([this] { netlist.system.take(); });
    relays.addTo(*command, netlist.system);
    netlist.system.fill(addDutTypeTo(*command, dutTypes),
                        [this](const VelkSystemFile &file) { dutTypes = file.options.dutTypes; });
    addRepeatable(*command, "--ignore", ignored, "Leave out what is found under this code, see below")
        ->check(ignorableValidator())
        ->type_name("CODE");
    command->add_flag("--all", showsAll, "Show all findings as text, not the first ones of each code only");
    netlist.system.add([this](const VelkSystemFile &file) { accepted = file.ignoredFindings; });
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

/// Of what leaves out nothing: the option, or the system file.
QString CheckCommand::placeOf(const QString &note) const
{
    const bool isGiven = std::any_of(ignored.cbegin(), ignored.cend(), [&](const std::string &text) {
        return note.startsWith(toQString(text) + u": "_s);
    });
    return isGiven ? u"--ignore"_s : netlist.system.placeOfKey(u"ignore"_s);
}

int CheckCommand::run() const
{
    const QStringList files = toQStringList(netlist.files);
    const OutputTarget target = netlist.target();
    checkFiles(netlist.inputs() + relays.files(), target.fileName);
    auto netlists = readNetlists(files, readingMode(netlist.tolerant));
    const auto system = joined(netlists, toQStringList(netlist.connectorTypes));
    SystemCheck check(system);
    for (qsizetype i = 0; i < netlists.size(); ++i)
        check.addFile(files.at(i), netlists.at(i).repetitions());
    netlists.clear();
    printWarnings(typeWarnings(system, netlist, dutTypes, relays.passiveTypes));

    check.setComponentTypesThatAreSwitchable(toQStringList(netlist.switchableTypes));
    check.setComponentTypesThatAreInterfaces(toQStringList(netlist.interfaceTypes));
    check.setComponentTypesDut(toQStringList(dutTypes));
    check.setComponentTypesThatArePassive(toQStringList(relays.passiveTypes));
    check.setRelayTables(relays.readTables());
    check.setIgnored(toQStringList(ignored) + toQStringList(accepted));
    QStringList unusedIgnored;
    const CheckReport report{check.findings(&unusedIgnored), shownNames(files), system.getComponents().size(),
                             showsAll};
    for (const QString &note : std::as_const(unusedIgnored))
        printMessage(u"velk: %1 %2"_s.arg(placeOf(note), note));

    writeAs(netlist.format, findingFormats(), report, target);
    return report.findings.isEmpty() ? 0 : 1;
}
}
