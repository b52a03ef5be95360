#include "cli/commands/RelayOptions.h"

#include "cli/commands/CsvFile.h"
#include "cli/terminal/CommandError.h"
#include "cli/terminal/Message.h"
#include "cli/terminal/Progress.h"

#include <CLI/CLI.hpp>

#include <velk/model/EDAException.h>
#include <velk/naming/Suggestions.h>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

/// The last line is the one that ends the command.
void refuseErrors(const QList<PositionsError> &errors)
{
    constexpr qsizetype most = 10;
    QStringList lines;
    for (const PositionsError &error : errors.first(std::min(errors.size(), most)))
        lines.append(errorText(error));
    if (errors.size() > most)
        lines.append(u"%1 more whose positions are wrong"_s.arg(errors.size() - most));
    for (const QString &line : lines.first(lines.size() - 1))
        printMessage(u"velk: "_s + line);
    throw CommandError{lines.last()};
}
}

RelayOptions::RelayOptions()
{
    for (const QString &type : SwitchingTypes().passives)
        passiveTypes.push_back(type.toStdString());
}

void RelayOptions::addTo(CLI::App &command, SystemFileOptions &system)
{
    auto *tablesOption =
        addRepeatable(command, "--relays", tables,
                      "Table of what relays can do, by their parts: a CSV file with the columns part and positions");
    tablesOption->type_name("FILE");
    system.fill(tablesOption, [this, &system](const VelkSystemFile &file) {
        tables = file.options.relayTables;
        placeOfTables = system.placeOfKey(u"relays: "_s);
    });
    system.fill(
        addTypesTo(command, "--passive", passiveTypes, "CompType that always couples all its pins, as fuses do"),
        [this](const VelkSystemFile &file) { passiveTypes = file.options.passiveTypes; });
}

QStringList RelayOptions::files() const
{
    return toQStringList(tables);
}

QList<RelayTable> RelayOptions::readTables() const
try {
    QList<RelayTable> result;
    for (const QString &file : files())
        result.append(RelayTable(readCsv(file)));
    return result;
} catch (const CommandError &error) {
    throw CommandError{placeOfTables + error.message};
} catch (const EDAException &exception) {
    throw CommandError{placeOfTables + exception.message()};
}

SwitchingTypes RelayOptions::types(const NetlistOptions &netlistOptions) const
{
    return {toQStringList(passiveTypes), toQStringList(netlistOptions.switchableTypes),
            toQStringList(netlistOptions.interfaceTypes)};
}

QString errorText(const PositionsError &error)
{
    return u"%1: %2"_s.arg(enumeration(error.components), error.description());
}

void warnOfUnknown(const QStringList &relays)
{
    if (!relays.isEmpty())
        printWarnings(
            {u"relays whose positions are not known are crossed as drawn: %1; velk check tells more of them"_s.arg(
                enumeration(relays))});
}

SwitchingModel loadSwitching(const EDAProvider &netlist, const NetlistOptions &netlistOptions,
                             const RelayOptions &relayOptions)
{
    const auto tables = relayOptions.readTables();
    Progress::begin(u"finding out what the relays can do"_s);
    SwitchingModel model(netlist, relayOptions.types(netlistOptions), tables);
    if (!model.errors().isEmpty())
        refuseErrors(model.errors());
    return model;
}
}
