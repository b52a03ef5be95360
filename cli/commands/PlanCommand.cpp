#include "cli/commands/PlanCommand.h"

#include "cli/commands/ConnectionTable.h"
#include "cli/commands/CsvFile.h"
#include "cli/commands/Netlist.h"
#include "cli/commands/TypeWarnings.h"
#include "cli/formats/PlanFormats.h"
#include "cli/formats/PlanText.h"
#include "cli/terminal/CommandError.h"
#include "cli/terminal/Message.h"
#include "cli/terminal/Output.h"
#include "cli/terminal/Progress.h"

#include <CLI/CLI.hpp>

#include <velk/naming/PinSearch.h>

#include <algorithm>
#include <chrono>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

constexpr int hasNoPlan = 1; ///< exit status

void addTimeLimitTo(CLI::App &command, double &seconds)
{
    constexpr double least = 0.001;
    constexpr double greatest = 1e9;
    const auto toDecimal = [](std::string &text) {
        bool isNumber = false;
        const double number = toQString(text).toDouble(&isNumber);
        if (!isNumber || !(number >= least && number <= greatest))
            return u"'%1' is no number of seconds from 0.001 to 1000000000"_s.arg(toQString(text)).toStdString();
        text = QString::number(number, 'f', 3).toStdString();
        return std::string();
    };
    command
        .add_option("--time-limit", seconds,
                    "Take the best plan that is found for a step in this time, in seconds, proven or not")
        ->transform(CLI::Validator(toDecimal, {}))
        ->type_name("SECONDS");
}

QList<PlanStep> planSteps(const QList<ConnectionStep> &steps, ConnectionRequest request, const PlanningLimits &limits,
                          const SwitchingModel &model)
{
    const ConnectionPlanner planner(model);
    SwitchedState state{std::vector<int>(static_cast<std::size_t>(model.gangCount())), {}};
    QList<PlanStep> result;
    for (const ConnectionStep &step : steps) {
        Progress::begin(u"planning step %1 of %2"_s.arg(result.size() + 1).arg(steps.size()));
        request.connections = step.connections;
        result.append({step.name, step.connections, step.rows, step.places, planStep(planner, request, state, limits)});
    }
    return result;
}

void reportStepsWithoutPlan(const PlanReport &report)
{
    for (const PlanStep &step : report.steps) {
        if (!step.hasPlan())
            printMessage(u"velk: step '%1': %2"_s.arg(step.name, planResultText(report, step)));
    }
}
}

PlanCommand::PlanCommand(CLI::App &app)
    : command(app.add_subcommand("plan", "Find the relays to set for several connections at once, or prove that there "
                                         "are none"))
{
    addInputFile(*command, "TABLE", tableFile,
                 "Steps, each with the connections that are to be in it: a CSV file with the columns step, from, from "
                 "pin, to and to pin; - is standard input")
        ->required()
        ->type_name("");
    addRepeatable(*command, "--allow", allowed, "Let connections reach pins of this component too")->type_name("REF");
    command->add_flag("--side-connections", allowsSideConnections,
                      "Let connections reach pins of all sources and DUTs, and connect such pins with one another");
    command->add_flag("--no-couplings", forbidsCouplings,
                      "Let no resistor couple connections that have nothing in common");
    command->add_flag("--trust-unknown", trustsUnknown,
                      "Take relays whose positions are not known for such that connect nothing");
    command->add_flag("--fewest-changes", wantsFewestChanges,
                      "Move as few relays as possible from step to step, instead of setting as few as possible");
    addTimeLimitTo(*command, timeLimit);
    exclusions.addTo(*command, netlist.system);
    relays.addTo(*command, netlist.system);
    netlist.addTo(*command, formatNames(planFormats()));
    command->callback([this] { netlist.system.take(); });
    command->footer(
        "A component in the table is its reference, as K3#2, or K3 where one netlist only has a K3, or properties, as "
        "Dev=DMM;DevNo=2; its pin is a number or a name. Rows of one step stand one below the other.\n\n"
        "Exit status: 0 each step has a plan, 1 a step has none, or none was found in time, 2 wrong usage or "
        "unreadable input.\n\n" +
        exampleHeading +
        "  velk plan examples/demo/plan.csv examples/demo/instruments.net examples/demo/matrix.net \\\n"
        "    examples/demo/adapter.net");
}

bool PlanCommand::isChosen() const
{
    return command->parsed();
}

int PlanCommand::run() const
{
    const QString table = toQString(tableFile);
    const QStringList files = toQStringList(netlist.files);
    const OutputTarget target = netlist.target();
    checkFiles(netlist.inputs() + relays.files() + QStringList{table}, target.fileName);
    const auto provider = loadNetlists(files, toQStringList(netlist.connectorTypes), readingMode(netlist.tolerant));
    printWarnings(typeWarnings(provider, netlist, {}, relays.passiveTypes));
    const SwitchingModel model = loadSwitching(provider, netlist, relays);

    const ConnectionRequest request = requestOn(provider, model);
    PlanningLimits limits;
    if (timeLimit > 0)
        limits.time = std::chrono::milliseconds(qRound64(timeLimit * 1000));
    const auto steps = connectionStepsOf(readCsv(table), provider, model);
    const PlanReport report{provider,          model,       PinNames(provider),
                            shownNames(files), request.aim, planSteps(steps, request, limits, model)};
    writeAs(netlist.format, planFormats(), report, target);
    if (!target.fileName.isEmpty() || !tellsStepsWithoutPlan(netlist.format))
        reportStepsWithoutPlan(report);
    const bool haveAllPlans =
        std::all_of(report.steps.cbegin(), report.steps.cend(), [](const PlanStep &step) { return step.hasPlan(); });
    return haveAllPlans ? 0 : hasNoPlan;
}

ConnectionRequest PlanCommand::requestOn(const EDAProvider &provider, const SwitchingModel &model) const
{
    ConnectionRequest request;
    QStringList crossedTypes = toQStringList(relays.passiveTypes) + toQStringList(netlist.switchableTypes);
    crossedTypes.removeDuplicates();
    for (const QString &ref : exclusions.componentsIn(provider, crossedTypes))
        request.excludedComponents.push_back(model.componentOf(ref));
    for (const auto &net : exclusions.netsIn(provider)) {
        if (const int number = model.netOf(*net); number != SwitchingModel::none) // a net may be without pins
            request.excludedNets.push_back(number);
    }
    request.allowedComponents = allowedOn(provider, model);
    request.allowsSideConnections = allowsSideConnections;
    request.forbidsCouplings = forbidsCouplings;
    request.trustsUnknown = trustsUnknown;
    request.aim = wantsFewestChanges ? PlanAim::FewestChanges : PlanAim::FewestAway;
    return request;
}

std::vector<int> PlanCommand::allowedOn(const EDAProvider &provider, const SwitchingModel &model) const
try {
    std::vector<int> components;
    for (const QString &ref : toQStringList(allowed)) {
        components.push_back(model.componentOf(findComponent(provider, ref)->ref));
        if (model.role(components.back()) != SwitchingRole::Interface)
            printWarnings(
                {u"--allow %1: allows nothing, since connections keep out of components of CompType %2 only"_s.arg(
                    ref, toQStringList(netlist.interfaceTypes).join(u" or "_s))});
    }
    return components;
} catch (const NameNotFoundException &exception) {
    throw CommandError{u"--allow "_s + exception.message()};
}
}
