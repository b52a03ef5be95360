#include "cli/commands/StateCommand.h"

#include "cli/commands/ConnectionTable.h"
#include "cli/commands/CsvFile.h"
#include "cli/commands/Netlist.h"
#include "cli/commands/RelaySettings.h"
#include "cli/commands/TypeWarnings.h"
#include "cli/formats/Count.h"
#include "cli/formats/StateFormats.h"
#include "cli/terminal/CommandError.h"
#include "cli/terminal/Message.h"
#include "cli/terminal/Output.h"
#include "cli/terminal/Progress.h"

#include <CLI/CLI.hpp>

#include <velk/naming/Suggestions.h>

#include <QMap>
#include <QSet>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

constexpr int isNotAsExpected = 1; ///< exit status

using Expectations = QMap<QString, ConnectionStep>; // by name

/// Throws a CommandError unless the steps of the table are those of the states, each once.
Expectations expectationsOf(const QString &fileName, const QList<RelayStep> &steps, const EDAProvider &netlist,
                            const SwitchingModel &model)
{
    Expectations expectations;
    for (const ConnectionStep &step : connectionStepsOf(readCsv(fileName), netlist, model)) {
        if (expectations.contains(step.name))
            throw CommandError{u"%1: the step '%2' begins twice"_s.arg(shownName(fileName), step.name)};
        expectations.insert(step.name, step);
    }
    QSet<QString> given;
    for (const RelayStep &step : steps) {
        if (!expectations.contains(step.name))
            throw CommandError{u"%1: nothing is expected of the step '%2'; there are expectations of %3"_s.arg(
                shownName(fileName), step.name, enumeration(expectations.keys()))};
        given.insert(step.name);
    }
    for (auto step = expectations.keyBegin(); step != expectations.keyEnd(); ++step) {
        if (!given.contains(*step))
            throw CommandError{u"%1: no state is given of the step '%2'"_s.arg(shownName(fileName), *step)};
    }
    return expectations;
}

void reportUnknown(const QStringList &unknown)
{
    if (!unknown.isEmpty())
        printMessage(u"velk: the positions of %1 are not known, so what they connect is left out: %2"_s.arg(
            countOf(unknown.size(), u"relay"_s), enumeration(unknown)));
}

QList<StateStep> stepsIn(const SwitchingModel &model, const QList<RelayStep> &relaySteps)
{
    Connectivity state(model);
    QList<StateStep> steps;
    for (const RelayStep &step : relaySteps) {
        state.setPositions(step.positions);
        steps.append({step.name, step.positions, connectionsIn(state), std::nullopt});
    }
    return steps;
}

void compare(const SwitchingModel &model, const Expectations &expectations, QList<StateStep> &steps)
{
    const Connectivity atRest(model);
    Connectivity state(model);
    for (StateStep &step : steps) {
        state.setPositions(step.positions);
        const ConnectionStep expected = expectations.value(step.name);
        step.expectation = {expected.connections, expected.rows,
                            compareConnections(state, atRest, expected.connections)};
    }
}

bool isAsExpected(const StateStep &step)
{
    return !step.expectation ||
           (step.expectation->compared.missing.isEmpty() && step.expectation->compared.shorts.isEmpty());
}
}

StateCommand::StateCommand(CLI::App &app)
    : command(app.add_subcommand("state", "Show what is connected while relays are set"))
{
    auto *table = addInputFile(*command, "--table", tableFile,
                               "Steps, each with the relays that are set in it: a CSV file with the columns step, "
                               "component and position");
    addRepeatable(*command, "--set", settings,
                  "Set this relay, all others being at rest; POSITION is a number or a name, 1 if left out")
        ->type_name("REF[=POSITION]")
        ->excludes(table);
    addInputFile(*command, "--expect", expectedFile,
                 "Compare with the connections that are meant to be: a CSV file with the columns step, from, from pin, "
                 "to and to pin");
    relays.addTo(*command, netlist.system);
    netlist.addTo(*command, formatNames(stateFormats()));
    command->callback([this] { netlist.system.take(); });
    command->footer(
        "A relay is given by its reference, as K3#2, or K3 where one netlist only has a K3. So is a component in the "
        "table of --expect, or by properties, as Dev=DMM;DevNo=2; its pin by number or name.\n\n"
        "Exit status: 0 done, 1 with --expect: something is missing or short, 2 wrong usage or unreadable input.\n\n" +
        exampleHeading +
        "  velk state --set K1#1 --set K307 examples/demo/instruments.net examples/demo/matrix.net \\\n"
        "    examples/demo/adapter.net");
}

bool StateCommand::isChosen() const
{
    return command->parsed();
}

QStringList StateCommand::tables() const
{
    QStringList files = relays.files();
    for (const std::string &file : {tableFile, expectedFile}) {
        if (!file.empty())
            files.append(toQString(file));
    }
    return files;
}

int StateCommand::run() const
{
    const QStringList files = toQStringList(netlist.files);
    const OutputTarget target = netlist.target();
    checkFiles(netlist.inputs() + tables(), target.fileName);
    const auto provider = loadNetlists(files, toQStringList(netlist.connectorTypes), readingMode(netlist.tolerant));
    printWarnings(typeWarnings(provider, netlist, {}, relays.passiveTypes));
    const SwitchingModel model = loadSwitching(provider, netlist, relays);

    const auto steps = tableFile.empty() ? QList<RelayStep>{stepOf(toQStringList(settings), provider, model)}
                                         : relayStepsOf(readCsv(toQString(tableFile)), provider, model);
    Progress::begin(u"finding out what is connected"_s);
    StateReport report{provider, model, PinNames(provider), shownNames(files), stepsIn(model, steps)};
    if (!expectedFile.empty())
        compare(model, expectationsOf(toQString(expectedFile), steps, provider, model), report.steps);
    if (netlist.format == "text")
        reportUnknown(model.unknownComponents());
    writeAs(netlist.format, stateFormats(), report, target);
    return std::all_of(report.steps.cbegin(), report.steps.cend(), isAsExpected) ? 0 : isNotAsExpected;
}
}
