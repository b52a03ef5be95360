#include "cli/RoutesCommand.h"

#include "cli/CommandError.h"
#include "cli/Netlist.h"
#include "cli/Output.h"
#include "cli/RouteDrawing.h"
#include "cli/RouteFormats.h"

#include <velk/facade/VelkRouting.h>
#include <velk/model/EDAException.h>
#include <velk/routing/Routing.h>

#include <limits>

using namespace Velk;

namespace VelkCli {

namespace {

// Of a pin that findPaths() has found by the same steps.
QSharedPointer<EDANetNode> endOf(const EDAProvider &netlist, const QMap<QString, QString> &properties,
                                 const QString &pin)
{
    const auto component = netlist.getComponentByProperties(properties);
    const auto part = netlist.getPartByName(component->part);
    return EDANetNode::create(component->ref, part->getPinByNumberOrName(pin)->number);
}

/// One more is asked for, to know whether there are more.
constexpr int mostRoutes = std::numeric_limits<int>::max() - 1;

QByteArray format(const RouteReport &report, const std::string &formatName)
{
    if (formatName == "json")
        return routesToJson(report);
    if (formatName == "csv")
        return routesToCsv(report);
    if (formatName == "dot")
        return drawRoutes(report);
    return routesToText(report);
}
}

RoutesCommand::RoutesCommand(CLI::App &app)
    : maxSwitches(Routing::DEFAULT_MAX_SWITCHING_COMPONENTS_PER_PATH)
    , maxConnections(Routing::DEFAULT_MAX_ADDITIONAL_NODES_PER_PATH)
    , command(app.add_subcommand("routes", "Show the routes from a source pin to a DUT pin"))
{
    addRepeatable(*command, "--source", sourceProperties, "Property of the source component; all given must match")
        ->required()
        ->type_name("KEY=VALUE");
    command->add_option("--source-pin", sourcePin, "Its pin, by number or name")->required()->type_name("PIN");
    addRepeatable(*command, "--dut", dutProperties, "Property of the DUT component; all given must match")
        ->required()
        ->type_name("KEY=VALUE");
    command->add_option("--dut-pin", dutPin, "Its pin, by number or name")->required()->type_name("PIN");
    command
        ->add_option("--max-switches", maxSwitches,
                     "Go on from a net that was reached over at most N switches, so that routes of up to N+1 "
                     "are found")
        ->type_name("N")
        ->capture_default_str();
    command->add_option("--max-connections", maxConnections, "Leave out routes with more side connections than N")
        ->type_name("N")
        ->capture_default_str();
    command->add_option("--max-routes", maxRoutes, "Show the first N routes only; 0 shows all")
        ->check(CLI::Range(mostRoutes).description({}))
        ->type_name("N")
        ->capture_default_str();
    netlist.addTo(*command, {"text", "json", "csv", "dot"});
    command->add_flag("--trace", trace, "Log every net that is searched on standard error");
    command->footer("Exit status: 0 there are routes, 1 there are none, 2 wrong usage or unreadable input.\n\n" +
                    exampleHeading +
                    "  velk routes --source Dev=DMM --source-pin HI --dut Bench=2 --dut CompType=DUT --dut-pin OUT \\\n"
                    "    examples/demo/instruments.net examples/demo/matrix.net examples/demo/adapter.net");
}

bool RoutesCommand::isChosen() const
{
    return command->parsed();
}

int RoutesCommand::run() const
{
    VelkRouting::setTraceEnabled(trace);
    const auto source = parseProperties(QStringLiteral("--source"), sourceProperties);
    const auto dut = parseProperties(QStringLiteral("--dut"), dutProperties);
    refuseToOverwrite(toQStringList(netlist.files), toQString(netlist.outputFile));
    auto provider = loadNetlists(toQStringList(netlist.files), toQStringList(netlist.connectorTypes),
                                 readingMode(netlist.tolerant));

    Routing routing(&provider);
    routing.setComponentTypesThatAreSwitchable(toQStringList(netlist.switchableTypes));
    routing.setComponentTypesThatAreInterfaces(toQStringList(netlist.interfaceTypes));
    routing.setMaxSwitchingComponentsPerPath(maxSwitches);
    routing.setMaxAdditionalNodesPerPath(maxConnections);
    routing.setMaxPaths(maxRoutes > 0 ? maxRoutes + 1 : 0);
    try {
        auto paths = routing.findPaths(source, toQString(sourcePin), dut, toQString(dutPin));
        const bool areThereMore = maxRoutes > 0 && paths.size() > maxRoutes;
        if (areThereMore)
            paths.resize(maxRoutes);
        const RouteReport report{provider,
                                 endOf(provider, source, toQString(sourcePin)),
                                 endOf(provider, dut, toQString(dutPin)),
                                 paths,
                                 areThereMore,
                                 PinNames(provider)};
        writeOutput(toQString(netlist.outputFile), format(report, netlist.format));
        return paths.isEmpty() ? 1 : 0;
    } catch (const EDAException &exception) {
        throw CommandError{exception.message()};
    }
}
}
