#include "cli/commands/RoutesCommand.h"

#include "cli/commands/LeftOutWays.h"
#include "cli/commands/Netlist.h"
#include "cli/commands/TypeWarnings.h"
#include "cli/formats/NoRouteText.h"
#include "cli/formats/RouteFormats.h"
#include "cli/formats/RouteRelays.h"
#include "cli/terminal/CommandError.h"
#include "cli/terminal/Message.h"
#include "cli/terminal/Output.h"
#include "cli/terminal/Progress.h"

#include <CLI/CLI.hpp>

#include <velk/facade/VelkRouting.h>
#include <velk/naming/Suggestions.h>
#include <velk/routing/Routing.h>

#include <exception>
#include <limits>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

constexpr int noRoutes = 1; ///< exit status
/// One more is asked for, to know whether there are more.
constexpr int mostRoutes = std::numeric_limits<int>::max() - 1;

/// Leaves the first \a count of the list; 0 is all. Whether there were more.
template <typename Path>
bool takeFirst(int count, QList<Path> &paths)
{
    if (count == 0 || paths.size() <= count)
        return false;
    paths.resize(count);
    return true;
}

void find(const RouteEnd &source, const RouteEnd &destination, bool areTraced, int maxRoutes, RouteReport &report)
{
    Progress::begin(QStringLiteral("searching for routes"));
    const auto &[from, fromNode] = source;
    const auto &[to, toNode] = destination;
    if (areTraced)
        report.tracedPaths = report.routing.findTracedPathsBetween(from, fromNode->pin, to, toNode->pin);
    else
        report.paths = report.routing.findPathsBetween(from, fromNode->pin, to, toNode->pin);
    report.areThereMore = takeFirst(maxRoutes, report.paths) || takeFirst(maxRoutes, report.tracedPaths);
}

/// Has the report say why there is no route, as far as that is known after some seconds.
void explain(const RouteEnd &source, const RouteEnd &destination, RouteReport &report)
{
    Progress::begin(u"finding out why there is no route"_s);
    report.routing.setInterruption(afterSomeSeconds());
    try {
        report.reason = report.routing.explainNoPathBetween(source.component, source.node->pin, destination.component,
                                                            destination.node->pin);
    } catch (const std::exception &exception) {
        report.failure = QString::fromUtf8(exception.what());
        report.reason = NoPathReason();
    }
}
}

RoutesCommand::RoutesCommand(CLI::App &app)
    : command(app.add_subcommand("routes", "Show the routes from a source pin to a DUT pin"))
{
    source.addTo(*command);
    dut.addTo(*command);
    command->callback([this] {
        source.check();
        dut.check();
        netlist.system.take();
    });
    netlist.system.fill(
        addNumber(*command, "--max-routes", maxRoutes, "Show the first N routes only; 0 shows all", 0, mostRoutes),
        [this](const VelkSystemFile &file) { maxRoutes = static_cast<int>(file.limits.maxRoutes); });
    search.addTo(*command, netlist.system);
    addRepeatable(*command, "--through", through, "Show the routes over this component only; over all that are given")
        ->type_name("REF");
    netlist.addTo(*command, formatNames(routeFormats()));
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
    if (trace)
        Progress::end();
    const OutputTarget target = netlist.target();
    checkFiles(netlist.inputs() + search.relays.files(), target.fileName);
    auto provider = loadNetlists(toQStringList(netlist.files), toQStringList(netlist.connectorTypes),
                                 readingMode(netlist.tolerant));
    printWarnings(typeWarnings(provider, netlist, {}, search.relays.passiveTypes));
    const RouteEnd sourceEnd = findEnd(provider, source);
    const RouteEnd dutEnd = findEnd(provider, dut);

    RouteReport report{provider,
                       routingOn(provider),
                       sourceEnd.node,
                       dutEnd.node,
                       PinNames(provider),
                       shownNames(toQStringList(netlist.files)),
                       search.switchingOf(provider, netlist)};
    if (report.switching)
        report.routing.setRelayContacts(report.switching->relayContacts());
    find(sourceEnd, dutEnd, !search.asDrawn || needsTracedPaths(netlist.format), maxRoutes, report);
    VelkRouting::setTraceEnabled(false);
    if (report.switching && (report.routeCount() == 0 || tellsLeftOut(netlist.format))) // it may take some seconds
        report.leftOut = leftOutWays(sourceEnd, dutEnd, report);
    warnOfUnknown(unknownRelays(report));
    const bool areThereAny = report.routeCount() > 0;
    if (!areThereAny)
        explain(sourceEnd, dutEnd, report);
    writeAs(netlist.format, routeFormats(), report, target);
    if (areThereAny)
        return 0;
    for (const QString &text : reasonTexts(report))
        printMessage(u"velk: "_s + text);
    return noRoutes;
}

QStringList RoutesCommand::required(const EDAProvider &provider) const
try {
    QStringList refs;
    for (const std::string &ref : through)
        refs.append(findComponent(provider, toQString(ref))->ref);
    return refs;
} catch (const NameNotFoundException &exception) {
    throw CommandError{u"--through "_s + exception.message()};
}

Routing RoutesCommand::routingOn(EDAProvider &provider) const
{
    Routing routing = search.routingOn(provider, netlist);
    routing.setMaxPaths(maxRoutes > 0 ? maxRoutes + 1 : 0);
    routing.setRequiredComponents(required(provider));
    return routing;
}
}
