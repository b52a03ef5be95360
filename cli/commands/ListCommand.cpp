#include "cli/commands/ListCommand.h"

#include "cli/commands/Netlist.h"
#include "cli/commands/TypeWarnings.h"
#include "cli/commands/Warnings.h"
#include "cli/formats/CsvWriter.h"
#include "cli/formats/Json.h"
#include "cli/formats/Table.h"
#include "cli/terminal/Output.h"

#include <CLI/CLI.hpp>

#include <velk/naming/NetlistSelection.h>
#include <velk/naming/PinNames.h>

#include <algorithm>
#include <set>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

using Components = QList<QSharedPointer<EDAComponent>>;
using Parts = QList<QSharedPointer<EDAPart>>;
using Nets = QList<QSharedPointer<EDANet>>;

/// One list in its three forms, of which the one that is wanted is made.
struct Listing
{
    std::function<Table()> toText;
    std::function<void(CsvWriter &)> writeCsv;
    qsizetype count;
    std::function<QJsonObject(qsizetype)> toJson;
};

Table componentTable(const Components &components)
{
    Table table{{u"REF"_s, u"VALUE"_s, u"PART"_s, u"TYPE"_s, u"OTHER PROPERTIES"_s}, {}};
    for (const auto &component : components) {
        auto others = component->properties;
        others.remove(EDAComponent::TYPE);
        table.rows.append({component->ref, component->value, component->part, component->type(),
                           EDAComponent::propertiesToString(others)});
    }
    return table;
}

QStringList propertyKeys(const Components &components)
{
    std::set<QString> keys;
    for (const auto &component : components) {
        for (auto property = component->properties.cbegin(); property != component->properties.cend(); ++property)
            keys.insert(property.key());
    }
    return {keys.cbegin(), keys.cend()};
}

void writeComponents(const Components &components, CsvWriter &csv)
{
    const QStringList heading = QStringList{u"ref"_s, u"value"_s, u"part"_s} + propertyKeys(components);
    QHash<QString, qsizetype> columns;
    for (qsizetype column = 3; column < heading.size(); ++column)
        columns.insert(heading.at(column), column);
    csv.write(heading);
    for (const auto &component : components) {
        QStringList row{component->ref, component->value, component->part};
        row.resize(heading.size());
        for (auto property = component->properties.cbegin(); property != component->properties.cend(); ++property)
            row[columns.value(property.key())] = property.value();
        csv.write(row);
    }
}

Listing listComponents(const Components &components)
{
    return {[=] { return componentTable(components); }, [=](CsvWriter &csv) { writeComponents(components, csv); },
            components.size(), [=](qsizetype i) { return componentToJson(*components.at(i)); }};
}

Table partTable(const Parts &parts)
{
    Table table{{u"PART"_s, u"LIBRARY"_s, u"PINS"_s}, {}};
    for (const auto &part : parts) {
        QStringList pins;
        for (const auto &pin : std::as_const(part->pins))
            pins.append(pin->name.isEmpty() ? pin->number : u"%1 %2"_s.arg(pin->number, pin->name));
        table.rows.append({part->name, part->lib, pins.join(u", "_s)});
    }
    return table;
}

void writeParts(const Parts &parts, CsvWriter &csv)
{
    csv.write({u"part"_s, u"library"_s, u"pin number"_s, u"pin name"_s, u"pin type"_s});
    for (const auto &part : parts) {
        for (const auto &pin : std::as_const(part->pins))
            csv.write({part->name, part->lib, pin->number, pin->name, pin->type});
        if (part->pins.isEmpty())
            csv.write({part->name, part->lib, {}, {}, {}});
    }
}

QJsonObject partToJson(const EDAPart &part)
{
    QJsonArray pins;
    for (const auto &pin : part.pins)
        pins.append(pinToJson(*pin));
    return {{u"name"_s, part.name}, {u"lib"_s, part.lib}, {u"pins"_s, pins}};
}

Listing listParts(const Parts &parts)
{
    return {[=] { return partTable(parts); }, [=](CsvWriter &csv) { writeParts(parts, csv); }, parts.size(),
            [=](qsizetype i) { return partToJson(*parts.at(i)); }};
}

Table netTable(const Nets &nets, const PinNames &pinNames)
{
    Table table{{u"NET"_s, u"NODES"_s}, {}};
    for (const auto &net : nets) {
        QStringList nodes;
        for (const auto &node : std::as_const(net->nodes))
            nodes.append(pinNames.text(node->ref, node->pin));
        table.rows.append({net->name, nodes.join(u' ')});
    }
    return table;
}

void writeNets(const Nets &nets, CsvWriter &csv)
{
    csv.write({u"net"_s, u"ref"_s, u"pin number"_s});
    for (const auto &net : nets) {
        for (const auto &node : std::as_const(net->nodes))
            csv.write({net->name, node->ref, node->pin});
        if (net->nodes.isEmpty())
            csv.write({net->name, {}, {}});
    }
}

QJsonObject netToJson(const EDANet &net)
{
    QJsonArray nodes;
    for (const auto &node : net.nodes)
        nodes.append(QJsonObject{{u"ref"_s, node->ref}, {u"pin"_s, node->pin}});
    return {{u"name"_s, net.name}, {u"nodes"_s, nodes}};
}

Listing listNets(const Nets &nets, const EDAProvider &provider)
{
    return {[nets, &provider] { return netTable(nets, PinNames(provider)); },
            [=](CsvWriter &csv) { writeNets(nets, csv); }, nets.size(),
            [=](qsizetype i) { return netToJson(*nets.at(i)); }};
}

struct TypeRow
{
    QString type;
    int count;
    bool isSwitchable;
    bool isInterface;
    bool isConnector;
};

QList<TypeRow> typeRows(const Components &components, const NetlistOptions &options)
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

Table typeTable(const QList<TypeRow> &rows)
{
    Table table{{u"TYPE"_s, u"COUNT"_s, u"SWITCHABLE"_s, u"INTERFACE"_s, u"CONNECTOR"_s}, {}};
    const auto text = [](bool hasRole) { return hasRole ? u"yes"_s : u"-"_s; };
    for (const TypeRow &row : rows) {
        table.rows.append({row.type.isEmpty() ? u"(none)"_s : row.type, QString::number(row.count),
                           text(row.isSwitchable), text(row.isInterface), text(row.isConnector)});
    }
    return table;
}

void writeTypes(const QList<TypeRow> &rows, CsvWriter &csv)
{
    csv.write({u"type"_s, u"count"_s, u"switchable"_s, u"interface"_s, u"connector"_s});
    const auto text = [](bool hasRole) { return hasRole ? u"true"_s : u"false"_s; };
    for (const TypeRow &row : rows)
        csv.write({row.type, QString::number(row.count), text(row.isSwitchable), text(row.isInterface),
                   text(row.isConnector)});
}

QJsonObject typeToJson(const TypeRow &row)
{
    return {{u"type"_s, row.type},
            {u"count"_s, row.count},
            {u"switchable"_s, row.isSwitchable},
            {u"interface"_s, row.isInterface},
            {u"connector"_s, row.isConnector}};
}

Listing listTypes(const QList<TypeRow> &rows)
{
    return {[=] { return typeTable(rows); }, [=](CsvWriter &csv) { writeTypes(rows, csv); }, rows.size(),
            [=](qsizetype i) { return typeToJson(rows.at(i)); }};
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

void write(const Listing &listing, const NetlistOptions &options, CsvReader reader, const QString &what)
{
    const QString fileName = toQString(options.outputFile);
    if (options.format == "json") {
        writeOutput(fileName, [&](QIODevice &device) { writeJson(device, {}, what, listing.count, listing.toJson); });
    } else if (options.format == "csv") {
        writeOutput(fileName, [&](QIODevice &device) {
            CsvWriter csv(device, reader);
            listing.writeCsv(csv);
        });
    } else {
        writeText(fileName, toText(listing.toText(), Colour::forOutput(fileName)));
    }
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
    netlist.addTo(*command, {"text", "json", "csv"});
    command->footer(exampleHeading + "  velk list components --where CompType=Relay examples/demo/matrix.net");
}

bool ListCommand::isChosen() const
{
    return command->parsed();
}

int ListCommand::run() const
{
    const CsvReader reader = netlist.csvReader();
    const auto properties = parseProperties(u"--where"_s, where);
    checkFiles(toQStringList(netlist.files), toQString(netlist.outputFile));
    const auto provider = loadNetlists(toQStringList(netlist.files), toQStringList(netlist.connectorTypes),
                                       readingMode(netlist.tolerant));
    printWarnings(typeWarnings(provider, netlist));
    const QString listed = toQString(what);
    const NetlistSelection selection(provider, properties);
    const auto listing = listWhat(listed, selection, provider, netlist);
    const QString whyEmpty = properties.isEmpty() ? QString() : selection.whyEmpty();
    if (!whyEmpty.isEmpty())
        printWarnings({u"--where: "_s + whyEmpty});
    write(listing, netlist, reader, listed);
    return 0;
}
}
