#include "cli/ListCommand.h"

#include "cli/CommandError.h"
#include "cli/Json.h"
#include "cli/Netlist.h"
#include "cli/Output.h"
#include "cli/PropertyHints.h"
#include "cli/Table.h"
#include "cli/TypeWarnings.h"
#include "cli/Warnings.h"

#include <CLI/CLI.hpp>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

using Components = QList<QSharedPointer<EDAComponent>>;

/// One list in its three forms.
struct Listing
{
    Table text;
    Table csv;
    QJsonArray json;
};

Components componentsWith(const QMap<QString, QString> &properties, const EDAProvider &provider)
{
    Components result;
    const auto components = provider.getComponents();
    for (const auto &component : components) {
        if (component->matchesProperties(properties))
            result.append(component);
    }
    return result;
}

QStringList propertyKeys(const Components &components)
{
    QMap<QString, QString> all;
    for (const auto &component : components)
        all.insert(component->properties);
    return all.keys();
}

Listing listComponents(const Components &components)
{
    const QStringList keys = propertyKeys(components);
    Listing listing{{{u"REF"_s, u"VALUE"_s, u"PART"_s, u"TYPE"_s, u"OTHER PROPERTIES"_s}, {}},
                    {QStringList{u"ref"_s, u"value"_s, u"part"_s} + keys, {}},
                    {}};
    for (const auto &component : components) {
        const QStringList common{component->ref, component->value, component->part};

        auto others = component->properties;
        others.remove(EDAComponent::TYPE);
        listing.text.rows.append(common + QStringList{component->type(), EDAComponent::propertiesToString(others)});

        QStringList values;
        for (const QString &key : keys)
            values.append(component->property(key));
        listing.csv.rows.append(common + values);

        listing.json.append(componentToJson(*component));
    }
    return listing;
}

Listing listParts(const EDAProvider &provider)
{
    Listing listing{{{u"PART"_s, u"LIBRARY"_s, u"PINS"_s}, {}},
                    {{u"part"_s, u"library"_s, u"pin number"_s, u"pin name"_s, u"pin type"_s}, {}},
                    {}};
    const auto parts = provider.getParts();
    for (const auto &part : parts) {
        QStringList pinTexts;
        QJsonArray pins;
        for (const auto &pin : std::as_const(part->pins)) {
            pinTexts.append(pin->name.isEmpty() ? pin->number : u"%1 %2"_s.arg(pin->number, pin->name));
            listing.csv.rows.append({part->name, part->lib, pin->number, pin->name, pin->type});
            pins.append(pinToJson(*pin));
        }
        if (part->pins.isEmpty())
            listing.csv.rows.append({part->name, part->lib, {}, {}, {}});
        listing.text.rows.append({part->name, part->lib, pinTexts.join(u", "_s)});
        listing.json.append(QJsonObject{{u"name"_s, part->name}, {u"lib"_s, part->lib}, {u"pins"_s, pins}});
    }
    return listing;
}

Listing listNets(const EDAProvider &provider)
{
    Listing listing{{{u"NET"_s, u"NODES"_s}, {}}, {{u"net"_s, u"ref"_s, u"pin number"_s}, {}}, {}};
    const PinNames pinNames(provider);
    const auto nets = provider.getNets();
    for (const auto &net : nets) {
        QStringList nodeTexts;
        QJsonArray nodes;
        for (const auto &node : std::as_const(net->nodes)) {
            nodeTexts.append(pinNames.text(node->ref, node->pin));
            listing.csv.rows.append({net->name, node->ref, node->pin});
            nodes.append(QJsonObject{{u"ref"_s, node->ref}, {u"pin"_s, node->pin}});
        }
        if (net->nodes.isEmpty())
            listing.csv.rows.append({net->name, {}, {}});
        listing.text.rows.append({net->name, nodeTexts.join(u' ')});
        listing.json.append(QJsonObject{{u"name"_s, net->name}, {u"nodes"_s, nodes}});
    }
    return listing;
}

Listing listTypes(const Components &components, const NetlistOptions &options)
{
    QMap<QString, int> counts;
    for (const auto &component : components)
        ++counts[component->type()];

    const auto isIn = [](const std::vector<std::string> &types, const QString &type) {
        return toQStringList(types).contains(type, Qt::CaseInsensitive);
    };
    Listing listing{{{u"TYPE"_s, u"COUNT"_s, u"SWITCHABLE"_s, u"INTERFACE"_s, u"CONNECTOR"_s}, {}},
                    {{u"type"_s, u"count"_s, u"switchable"_s, u"interface"_s, u"connector"_s}, {}},
                    {}};
    for (auto it = counts.cbegin(); it != counts.cend(); ++it) {
        const bool roles[] = {isIn(options.switchableTypes, it.key()), isIn(options.interfaceTypes, it.key()),
                              isIn(options.connectorTypes, it.key())};
        QStringList textRow{it.key().isEmpty() ? u"(none)"_s : it.key(), QString::number(it.value())};
        QStringList csvRow{it.key(), QString::number(it.value())};
        for (const bool role : roles) {
            textRow.append(role ? u"yes"_s : u"-"_s);
            csvRow.append(role ? u"true"_s : u"false"_s);
        }
        listing.text.rows.append(textRow);
        listing.csv.rows.append(csvRow);
        listing.json.append(QJsonObject{{u"type"_s, it.key()},
                                        {u"count"_s, it.value()},
                                        {u"switchable"_s, roles[0]},
                                        {u"interface"_s, roles[1]},
                                        {u"connector"_s, roles[2]}});
    }
    return listing;
}

Listing listWhat(const QString &what, const QMap<QString, QString> &where, const EDAProvider &provider,
                 const NetlistOptions &options)
{
    if (what == u"components"_s)
        return listComponents(componentsWith(where, provider));
    if (what == u"types"_s)
        return listTypes(componentsWith(where, provider), options);
    if (!where.isEmpty())
        throw CommandError{u"--where: filters components, so it goes with 'components' and 'types' only"_s};
    return what == u"parts"_s ? listParts(provider) : listNets(provider);
}

QByteArray format(const Listing &listing, const std::string &formatName, const QString &what, const Colour &colour)
{
    if (formatName == "json")
        return jsonDocument({{what, listing.json}});
    return formatName == "csv" ? toCsv(listing.csv) : toText(listing.text, colour);
}
}

ListCommand::ListCommand(CLI::App &app)
    : command(app.add_subcommand("list", "Show what was read and joined"))
{
    command->add_option("WHAT", what, "What to list")
        ->required()
        ->check(CLI::IsMember({"components", "parts", "nets", "types"}))
        ->type_name("");
    addRepeatable(*command, "--where", where, "Only components with this property; all given must match")
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
    const auto properties = parseProperties(u"--where"_s, where);
    refuseToOverwrite(toQStringList(netlist.files), toQString(netlist.outputFile));
    const auto provider = loadNetlists(toQStringList(netlist.files), toQStringList(netlist.connectorTypes),
                                       readingMode(netlist.tolerant));
    printWarnings(typeWarnings(provider, netlist));
    const QString listed = toQString(what);
    const QString outputFile = toQString(netlist.outputFile);
    const auto listing = listWhat(listed, properties, provider, netlist);
    if (!properties.isEmpty() && listing.text.rows.isEmpty())
        printWarnings({u"--where: "_s + whyNoneMatches(provider.getComponents(), properties)});
    writeOutput(outputFile, format(listing, netlist.format, listed, Colour::forOutput(outputFile)));
    return 0;
}
}
