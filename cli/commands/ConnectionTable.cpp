#include "cli/commands/ConnectionTable.h"

#include "cli/commands/ComponentsByName.h"
#include "cli/commands/RouteEnd.h"
#include "cli/commands/StepTable.h"
#include "cli/terminal/CommandError.h"

#include <QHash>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

class ConnectionReader
{
public:
    ConnectionReader(const CsvTable &csv, const EDAProvider &provider, const SwitchingModel &switchingModel)
        : table(csv)
        , netlist(provider)
        , model(switchingModel)
        , components(switchingModel)
        , from{u"from"_s, table.requiredColumn(u"from"_s), table.requiredColumn(u"from pin"_s)}
        , to{u"to"_s, table.requiredColumn(u"to"_s), table.requiredColumn(u"to pin"_s)}
    {
    }

    ConnectionStep read(const TableStep &step)
    {
        ConnectionStep result{step.name, {}, {}, {}};
        for (const CsvTable::Row &row : step.rows) {
            if (!isGiven(row, from) && !isGiven(row, to))
                continue;
            result.connections.append({pinOf(row, from), pinOf(row, to)});
            result.rows.append(row.number - step.firstRow);
            result.places.append(table.place(row));
        }
        return result;
    }

private:
    struct End
    {
        QString name;
        qsizetype componentColumn;
        qsizetype pinColumn;
    };

    static bool isGiven(const CsvTable::Row &row, const End &end)
    {
        return !row.cells.at(end.componentColumn).isEmpty() || !row.cells.at(end.pinColumn).isEmpty();
    }

    /// Tables name the same pins again and again.
    InterfacePin pinOf(const CsvTable::Row &row, const End &end)
    {
        const std::pair key(row.cells.at(end.componentColumn), row.cells.at(end.pinColumn));
        const auto known = pins.constFind(key);
        return known != pins.cend() ? *known : *pins.insert(key, findPin(row, end));
    }

    InterfacePin findPin(const CsvTable::Row &row, const End &end) const
    {
        const QString place = table.place(row) + u": "_s;
        const QString &component = row.cells.at(end.componentColumn);
        const QString &pin = row.cells.at(end.pinColumn);
        if (component.isEmpty() || pin.isEmpty())
            throw CommandError{u"%1no %2 is given in the column '%3'"_s.arg(
                place, component.isEmpty() ? u"component"_s : u"pin"_s,
                table.columns().at(component.isEmpty() ? end.componentColumn : end.pinColumn))};
        PinDescription wanted;
        wanted.pin = pin;
        if (component.contains(u'='))
            wanted.properties = parseProperties(place + end.name, component.split(u';'));
        else
            wanted.ref = exactRef(component);
        const auto node = findEnd(netlist, wanted, {place, end.name, end.name, end.name + u" pin"_s}).node;
        const int net = model.netOf(node->ref, node->pin);
        if (net == SwitchingModel::none || model.netNames(net).isEmpty())
            throw CommandError{u"%1pin %2 of %3 is on no net"_s.arg(place, node->pin, node->ref)};
        return {node->ref, node->pin, net};
    }

    /// As written where that could be several or none, of which a message will tell.
    QString exactRef(const QString &written) const
    {
        const int component = components.componentOf(written);
        return component == SwitchingModel::none ? written : model.ref(component);
    }

    const CsvTable &table;
    const EDAProvider &netlist;
    const SwitchingModel &model;
    const ComponentsByName components;
    const End from;
    const End to;
    QHash<std::pair<QString, QString>, InterfacePin> pins; ///< by component and pin, as written
};
}

QList<ConnectionStep> connectionStepsOf(const CsvTable &table, const EDAProvider &netlist, const SwitchingModel &model)
{
    ConnectionReader reader(table, netlist, model);
    QList<ConnectionStep> steps;
    for (const TableStep &step : stepsOf(table))
        steps.append(reader.read(step));
    return steps;
}
}
