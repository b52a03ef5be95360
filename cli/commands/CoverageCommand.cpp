#include "cli/commands/CoverageCommand.h"

#include "cli/commands/CoverageSearch.h"
#include "cli/commands/Netlist.h"
#include "cli/commands/SavedMatrix.h"
#include "cli/commands/TypeWarnings.h"
#include "cli/formats/CoverageFormats.h"
#include "cli/terminal/CommandError.h"
#include "cli/terminal/Message.h"
#include "cli/terminal/Output.h"
#include "cli/terminal/Progress.h"

#include <CLI/CLI.hpp>

#include <velk/coverage/CoverageMatrix.h>
#include <velk/facade/VelkRouting.h>
#include <velk/naming/PropertyHints.h>
#include <velk/naming/References.h>
#include <velk/naming/Suggestions.h>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

constexpr int isWorse = 1; ///< exit status
constexpr int mostThreads = 1024;

/// The components whose pins are a side of the matrix.
struct Side
{
    QString option;
    QString type; ///< empty where the properties name it
    QMap<QString, QString> properties;
};

Side sideOf(const QString &option, const QString &type, const std::vector<std::string> &properties)
{
    Side side{option, type, parseProperties(option, toQStringList(properties))};
    if (side.properties.contains(EDAComponent::TYPE))
        side.type.clear();
    return side;
}

QString whyNoPins(const EDAProvider &netlist, const Side &side)
{
    auto components = netlist.getComponents();
    if (!side.type.isEmpty()) {
        const auto all = components;
        components.removeIf(
            [&](const auto &component) { return component->type().compare(side.type, Qt::CaseInsensitive) != 0; });
        if (components.isEmpty())
            return whyNoneMatches(all, {{EDAComponent::TYPE, side.type}});
    }
    const auto ofType = components;
    components.removeIf([&](const auto &component) { return !component->matchesProperties(side.properties); });
    if (components.isEmpty())
        return (side.type.isEmpty() ? QString() : u"among those with CompType=%1 "_s.arg(side.type)) +
               whyNoneMatches(ofType, side.properties);
    return u"no pin of %1 is on a net"_s.arg(enumeration(refsOf(components)));
}

QList<NodeWithComponent> pinsOf(const EDAProvider &netlist, const Side &side)
{
    auto pins = CoverageMatrix::pinsOnNets(netlist, side.type, side.properties);
    if (pins.isEmpty())
        throw CommandError{u"%1: %2"_s.arg(side.option, whyNoPins(netlist, side))};
    return pins;
}
}

CoverageCommand::CoverageCommand(CLI::App &app)
    : command(app.add_subcommand("coverage", "Show which source pins reach which DUT pins, over how few switches"))
{
    addRepeatable(*command, "--source", sourceProperties,
                  "Only the pins of sources with this property; all given must match")
        ->type_name("KEY=VALUE");
    addRepeatable(*command, "--dut", dutProperties, "Only the pins of DUTs with this property; all given must match")
        ->type_name("KEY=VALUE");
    command->add_flag("--critical", isCriticalAsked,
                      "Also show the components without any one of which pairs of pins are lost");
    addInputFile(*command, "--compare", savedFile,
                 "Show what is different from a matrix that was saved before with --format json");
    addNumber(*command, "--jobs", jobs, "Search in N threads at once; 0 is one for each processor", 0, mostThreads);
    search.addTo(*command, netlist.system);
    netlist.addTo(*command, formatNames(coverageFormats()));
    command->callback([this] { netlist.system.take(); });
    command->footer(
        "Sources are the components with the CompType Source, DUTs those with DUT; where --source or --dut gives a "
        "CompType, it is that one instead.\n\n"
        "Exit status: 0 done, 1 with --compare: pairs of pins are lost or longer, 2 wrong usage or unreadable "
        "input.\n\n" +
        exampleHeading +
        "  velk coverage examples/demo/instruments.net examples/demo/matrix.net examples/demo/adapter.net");
}

bool CoverageCommand::isChosen() const
{
    return command->parsed();
}

int CoverageCommand::run() const
{
    VelkRouting::setTraceEnabled(false);
    const QStringList files = toQStringList(netlist.files);
    const QStringList savedFiles = savedFile.empty() ? QStringList() : QStringList{toQString(savedFile)};
    const OutputTarget target = netlist.target();
    checkFiles(netlist.inputs() + search.relays.files() + savedFiles, target.fileName);
    const Side sourceSide = sideOf(u"--source"_s, Routing::DEFAULT_INTERFACE_COMPONENT_TYPE_SOURCE, sourceProperties);
    const Side dutSide = sideOf(u"--dut"_s, Routing::DEFAULT_INTERFACE_COMPONENT_TYPE_DUT, dutProperties);
    std::optional<SavedMatrix> saved;
    if (!savedFile.empty())
        saved.emplace(toQString(savedFile));

    auto provider = loadNetlists(files, toQStringList(netlist.connectorTypes), readingMode(netlist.tolerant));
    printWarnings(typeWarnings(provider, netlist, {}, search.relays.passiveTypes));
    CoverageReport report{provider,
                          search.routingOn(provider, netlist),
                          PinNames(provider),
                          shownNames(files),
                          search.switchingOf(provider, netlist),
                          pinsOf(provider, sourceSide),
                          pinsOf(provider, dutSide)};
    report.routing.setMaxPaths(mostRoutesCounted);
    if (report.switching)
        report.routing.setRelayContacts(report.switching->relayContacts());
    findCoverage({tellsFirstRoutes(netlist.format), isCriticalAsked, tellsUnused(netlist.format)}, jobs, report);
    warnOfUnknown(report.unknownRelays);
    if (saved)
        report.comparison = saved->comparedWith(report);
    writeAs(netlist.format, coverageFormats(), report, target);
    const bool isAnyWorse = saved && !(report.comparison->lost.isEmpty() && report.comparison->longer.isEmpty());
    return isAnyWorse ? isWorse : 0;
}
}
