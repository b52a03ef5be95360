#include "cli/commands/ListCommand.h"

#include "cli/commands/Netlist.h"
#include "cli/commands/TypeWarnings.h"
#include "cli/formats/ListFormats.h"
#include "cli/terminal/CommandError.h"
#include "cli/terminal/Message.h"
#include "cli/terminal/Output.h"

#include <CLI/CLI.hpp>

#include <velk/model/References.h>
#include <velk/naming/NetlistSelection.h>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

QList<TypeRow> typeRows(const QList<QSharedPointer<EDAComponent>> &components, const NetlistOptions &options)
{
    QMap<QString, int> counts;
    for (const auto &component : components)
        ++counts[component->type()];
    const auto isIn = [](const std::vector<std::string> &types, const QString &type) {
        return toQStringList(types).contains(type, Qt::CaseInsensitive);
    };
    QList<TypeRow> rows;
    for (auto it = counts.cbegin(); it != counts.cend(); ++it) {
        rows.append({it.key(), it.value(), isIn(options.switchableTypes, it.key()),
                     isIn(options.interfaceTypes, it.key()), isIn(options.connectorTypes, it.key())});
    }
    return rows;
}

QString partName(const EDAComponent &component, const EDAProvider &netlist)
{
    const auto part = netlist.getPartByName(component.part);
    return RelayTable::partName(part ? part->lib : QString(), drawnName(component.part));
}

QList<RelayRow> relayRows(const QList<QSharedPointer<EDAComponent>> &components, const EDAProvider &netlist,
                          const SwitchingModel &model)
{
    QList<RelayRow> rows;
    for (const auto &component : components) {
        const int number = model.componentOf(component->ref);
        if (model.role(number) != SwitchingRole::Relay)
            continue;
        RelayRow row{component->ref, partName(*component, netlist), model.positions(number), {}, false};
        const int gang = model.gangOf(number);
        if (gang != SwitchingModel::none) {
            const QStringList &members = model.gang(gang).components;
            row.gang = members.size() > 1 ? members.first() : QString();
            row.isUnknown = model.gang(gang).isUnknown;
        }
        rows.append(row);
    }
    return rows;
}

Listing listPositionsOf(const QList<QSharedPointer<EDAComponent>> &components, const EDAProvider &netlist,
                        const NetlistOptions &netlistOptions, const RelayOptions &relayOptions)
{
    const SwitchingModel model(netlist, relayOptions.types(netlistOptions), relayOptions.readTables());
    QStringList warnings;
    for (const PositionsError &error : model.errors())
        warnings.append(errorText(error));
    printWarnings(warnings);
    return listPositions(relayRows(components, netlist, model));
}

Listing listWhat(const QString &what, const NetlistSelection &selection, const EDAProvider &provider,
                 const NetlistOptions &options)
{
    if (what == u"components"_s)
        return listComponents(selection.components());
    if (what == u"types"_s)
        return listTypes(typeRows(selection.components(), options));
    if (what == u"parts"_s)
        return listParts(selection.parts());
    return listNets(selection.nets(), provider);
}
}

ListCommand::ListCommand(CLI::App &app)
    : command(app.add_subcommand("list", "Show what was read and joined"))
{
    command->add_option("WHAT", what, "What to list")
        ->required()
        ->check(CLI::IsMember({"components", "parts", "nets", "types"}))
        ->type_name("");
    addRepeatable(*command, "--where", where,
                  "Only components with this property, or this ref, value or part, and their parts and nets; all given "
                  "must match")
        ->type_name("KEY=VALUE");
    command->add_flag("--positions", showsPositions,
                      "Of the components list the relays, with the contacts that are closed in each position");
    relays.addTo(*command, netlist.system);
    netlist.addTo(*command, formatNames(listFormats()));
    command->callback([this] { netlist.system.take(); });
    command->footer(exampleHeading + "  velk list components --where CompType=Relay examples/demo/matrix.net");
}

bool ListCommand::isChosen() const
{
    return command->parsed();
}

int ListCommand::run() const
{
    const OutputTarget target = netlist.target();
    if (showsPositions && what != "components")
        throw CommandError{u"--positions: goes with components only"_s};
    const auto properties = parseProperties(u"--where"_s, toQStringList(where));
    checkFiles(netlist.inputs() + relays.files(), target.fileName);
    const auto provider = loadNetlists(toQStringList(netlist.files), toQStringList(netlist.connectorTypes),
                                       readingMode(netlist.tolerant));
    printWarnings(typeWarnings(provider, netlist, {}, relays.passiveTypes));
    const NetlistSelection selection(provider, properties);
    const auto listing = showsPositions ? listPositionsOf(selection.components(), provider, netlist, relays)
                                        : listWhat(toQString(what), selection, provider, netlist);
    const QString whyEmpty = properties.isEmpty() ? QString() : selection.whyEmpty();
    if (!whyEmpty.isEmpty())
        printWarnings({u"--where: "_s + whyEmpty});
    writeAs(netlist.format, listFormats(), listing, target);
    return 0;
}
}
