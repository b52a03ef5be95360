#include "cli/commands/RelaySettings.h"

#include "cli/commands/ComponentsByName.h"
#include "cli/commands/StepTable.h"
#include "cli/terminal/CommandError.h"

#include <velk/naming/PinSearch.h>
#include <velk/naming/Suggestions.h>

#include <QHash>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

/// Finds the relays and positions that texts mean. There may be more of them than relays.
class SettingReader
{
public:
    SettingReader(const EDAProvider &provider, const SwitchingModel &switchingModel)
        : netlist(provider)
        , model(switchingModel)
        , components(switchingModel)
    {
    }

    void beginStep()
    {
        positions.assign(static_cast<std::size_t>(model.gangCount()), 0);
        setBy.clear();
    }

    /// \a place is put before a message.
    void set(const QString &place, const QString &ref, const QString &text)
    {
        const int component = componentOf(place, ref);
        const int gang = gangOf(place, component);
        const int wanted = text.isEmpty() ? 1 : positionOf(place, component, text);
        int &position = positions[static_cast<std::size_t>(gang)];
        const int earlier = setBy.value(gang, component);
        if (setBy.contains(gang) && position != wanted)
            throw CommandError{u"%1%2: %3 is set to position %4 already%5"_s.arg(
                place, model.ref(component), model.ref(earlier), QString::number(position),
                earlier == component ? u""_s : u", of the same gang"_s)};
        setBy.insert(gang, component);
        position = wanted;
    }

    RelayStep step(const QString &name) const { return {name, positions}; }

private:
    int componentOf(const QString &place, const QString &ref) const
    {
        const int component = components.componentOf(ref);
        if (component != SwitchingModel::none)
            return component;
        try {
            return model.componentOf(findComponent(netlist, ref)->ref);
        } catch (const NameNotFoundException &exception) {
            throw CommandError{place + exception.message()};
        }
    }

    int gangOf(const QString &place, int component) const
    {
        const int gang = model.gangOf(component);
        if (gang != SwitchingModel::none && !model.gang(gang).isUnknown)
            return gang;
        throw CommandError{u"%1%2: %3; relays with known positions are %4"_s.arg(
            place, model.ref(component), whyItTakesNoPosition(component),
            enumeration(nearestFirst(model.ref(component), settableRelays())))};
    }

    QString whyItTakesNoPosition(int component) const
    {
        const int gang = model.gangOf(component);
        if (gang != SwitchingModel::none)
            return model.gang(gang).components.size() > 1 ? u"not all positions of its gang are known"_s
                                                          : u"its positions are not known"_s;
        if (model.role(component) == SwitchingRole::Relay)
            return u"it has no contacts"_s;
        const auto known = netlist.getComponentByRef(model.ref(component));
        return known->properties.contains(u"dnp"_s) ? u"it is not populated"_s
                                                    : u"its CompType '%1' is not one of relays"_s.arg(known->type());
    }

    QStringList settableRelays() const
    {
        QStringList refs;
        for (int gang = 0; gang < model.gangCount(); ++gang) {
            if (!model.gang(gang).isUnknown)
                refs += model.gang(gang).components;
        }
        return refs;
    }

    int positionOf(const QString &place, int component, const QString &text) const
    {
        const auto &known = model.positions(component).positions;
        const int number = text.toInt();
        if (QString::number(number) == text && number >= 0 && number < known.size())
            return number;
        QList<int> named;
        QStringList there;
        for (int i = 0; i < known.size(); ++i) {
            const QString &name = known.at(i).name;
            if (name == text)
                named.append(i);
            there.append(name.isEmpty() ? QString::number(i) : u"%1 (%2)"_s.arg(QString::number(i), name));
        }
        if (named.size() == 1)
            return named.first();
        throw CommandError{u"%1%2 has %3 position '%4'; there are %5"_s.arg(
            place, model.ref(component), named.isEmpty() ? u"no"_s : u"more than one"_s, text, enumeration(there))};
    }

    const EDAProvider &netlist;
    const SwitchingModel &model;
    const ComponentsByName components;
    std::vector<int> positions;
    QHash<int, int> setBy; ///< components by gangs
};
}

RelayStep stepOf(const QStringList &settings, const EDAProvider &netlist, const SwitchingModel &model)
{
    SettingReader reader(netlist, model);
    reader.beginStep();
    for (const QString &setting : settings) {
        const qsizetype sign = setting.indexOf(u'=');
        if (sign == 0 || sign == setting.size() - 1 || setting.isEmpty())
            throw CommandError{u"--set %1: expected REF or REF=POSITION"_s.arg(setting)};
        reader.set(u"--set "_s, setting.left(sign), sign < 0 ? QString() : setting.mid(sign + 1));
    }
    return reader.step(u"1"_s);
}

QList<RelayStep> relayStepsOf(const CsvTable &table, const EDAProvider &netlist, const SwitchingModel &model)
{
    const qsizetype refColumn = table.requiredColumn(u"component"_s);
    const qsizetype positionColumn = table.column(u"position"_s);
    SettingReader reader(netlist, model);
    QList<RelayStep> steps;
    for (const TableStep &step : stepsOf(table)) {
        reader.beginStep();
        for (const CsvTable::Row &row : step.rows) {
            const QString &ref = row.cells.at(refColumn);
            const QString position = row.cells.value(positionColumn);
            if (ref.isEmpty() && !position.isEmpty())
                throw CommandError{u"%1: no component is given"_s.arg(table.place(row))};
            if (!ref.isEmpty())
                reader.set(table.place(row) + u": "_s, ref, position);
        }
        steps.append(reader.step(step.name));
    }
    return steps;
}
}
