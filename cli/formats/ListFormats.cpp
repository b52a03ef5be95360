#include "cli/formats/ListFormats.h"

#include "cli/formats/Json.h"
#include "cli/formats/PropertyColumns.h"
#include "cli/terminal/Output.h"

#include <velk/naming/PinNames.h>
#include <velk/switching/PositionText.h>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

using Components = QList<QSharedPointer<EDAComponent>>;
using Parts = QList<QSharedPointer<EDAPart>>;
using Nets = QList<QSharedPointer<EDANet>>;

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

void writeComponents(const Components &components, CsvWriter &csv)
{
    const PropertyColumns properties(components);
    csv.write(QStringList{u"ref"_s, u"value"_s, u"part"_s} + properties.heading());
    for (const auto &component : components)
        csv.write(QStringList{component->ref, component->value, component->part} + properties.cellsOf(*component));
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

QString ruleName(PositionsRule rule)
{
    switch (rule) {
    case PositionsRule::Field:
        return u"field"_s;
    case PositionsRule::Table:
        return u"table"_s;
    case PositionsRule::ContactNumbers:
        return u"pin numbers"_s;
    case PositionsRule::PinNames:
        return u"pin names"_s;
    case PositionsRule::TwoPins:
        return u"two pins"_s;
    case PositionsRule::NoContacts:
        return u"coil only"_s;
    case PositionsRule::Unknown:
        break;
    }
    return u"unknown"_s;
}

Table positionTable(const QList<RelayRow> &rows)
{
    Table table{{u"REF"_s, u"PART"_s, u"TOLD BY"_s, u"GANG"_s, u"POSITIONS"_s}, {}};
    for (const RelayRow &row : rows) {
        const bool isUnknownByGang = row.isUnknown && row.positions.rule != PositionsRule::Unknown;
        table.rows.append({row.ref, row.part, ruleName(row.positions.rule),
                           isUnknownByGang ? row.gang + u" (unknown)"_s : row.gang,
                           positionsText(row.positions.positions)});
    }
    return table;
}

void writePositions(const QList<RelayRow> &rows, CsvWriter &csv)
{
    csv.write({u"ref"_s, u"part"_s, u"positions"_s, u"told by"_s, u"gang"_s, u"unknown"_s});
    for (const RelayRow &row : rows)
        csv.write({row.ref, row.part, positionsText(row.positions.positions), ruleName(row.positions.rule), row.gang,
                   row.isUnknown ? u"true"_s : u"false"_s});
}

QJsonObject positionsToJson(const RelayRow &row)
{
    QJsonArray positions;
    for (const ContactPosition &position : row.positions.positions) {
        QJsonArray closed;
        for (const Contact &contact : position.closed)
            closed.append(QJsonArray{contact.pin, contact.otherPin});
        positions.append(QJsonObject{{u"name"_s, position.name}, {u"closed"_s, closed}});
    }
    return {{u"ref"_s, row.ref},         {u"part"_s, row.part},
            {u"positions"_s, positions}, {u"toldBy"_s, ruleName(row.positions.rule)},
            {u"gang"_s, row.gang},       {u"unknown"_s, row.isUnknown}};
}

void writeAsText(const Listing &listing, const OutputTarget &target)
{
    writeText(target.fileName, toText(listing.toText(), Colour::forOutput(target.fileName)));
}

void writeAsJson(const Listing &listing, const OutputTarget &target)
{
    writeOutput(target.fileName,
                [&](QIODevice &device) { writeJson(device, {}, listing.name, listing.count, listing.toJson); });
}

void writeAsCsv(const Listing &listing, const OutputTarget &target)
{
    writeOutput(target.fileName, [&](QIODevice &device) {
        CsvWriter csv(device, target.csvReader);
        listing.writeCsv(csv);
    });
}
}

Listing listComponents(const Components &components)
{
    return {u"components"_s, [=] { return componentTable(components); },
            [=](CsvWriter &csv) { writeComponents(components, csv); }, components.size(),
            [=](qsizetype i) { return componentToJson(*components.at(i)); }};
}

Listing listParts(const Parts &parts)
{
    return {u"parts"_s, [=] { return partTable(parts); }, [=](CsvWriter &csv) { writeParts(parts, csv); }, parts.size(),
            [=](qsizetype i) { return partToJson(*parts.at(i)); }};
}

Listing listNets(const Nets &nets, const EDAProvider &netlist)
{
    return {u"nets"_s, [nets, &netlist] { return netTable(nets, PinNames(netlist)); },
            [=](CsvWriter &csv) { writeNets(nets, csv); }, nets.size(),
            [=](qsizetype i) { return netToJson(*nets.at(i)); }};
}

Listing listTypes(const QList<TypeRow> &rows)
{
    return {u"types"_s, [=] { return typeTable(rows); }, [=](CsvWriter &csv) { writeTypes(rows, csv); }, rows.size(),
            [=](qsizetype i) { return typeToJson(rows.at(i)); }};
}

Listing listPositions(const QList<RelayRow> &rows)
{
    return {u"positions"_s, [=] { return positionTable(rows); }, [=](CsvWriter &csv) { writePositions(rows, csv); },
            rows.size(), [=](qsizetype i) { return positionsToJson(rows.at(i)); }};
}

const Formats<Listing> &listFormats()
{
    static const Formats<Listing> formats{{"text", writeAsText}, {"json", writeAsJson}, {"csv", writeAsCsv}};
    return formats;
}
}
