#include <velk/ini/ChannelTables.h>

#include <velk/ini/TypedComponents.h>

using namespace Qt::StringLiterals;

namespace Velk {

namespace {

using Components = QList<QSharedPointer<EDAComponent>>;

QMap<QString, Components> byGroup(const Components &sources)
{
    QMap<QString, Components> groups;
    for (const auto &source : sources) {
        if (!source->group().isEmpty())
            groups[source->group()].append(source);
    }
    return groups;
}

QString deviceName(const EDAComponent &source)
{
    const QString name = u"%1-No%2"_s.arg(source.device(), source.deviceNumber());
    return source.channel().isEmpty() ? name : u"%1-Ch%2"_s.arg(name, source.channel());
}

ChannelRows rowsOf(const EDAComponent &component, const QSharedPointer<EDAPart> &part, const QString &keyPrefix,
                   const QString &valuePrefix)
{
    ChannelRows rows{component.type(), component.ref, false, {}};
    rows.addPins(part, keyPrefix, valuePrefix);
    return rows;
}

ChannelRows rowsOfGroup(const EDAProvider &netlist, const QString &group, const Components &sources)
{
    ChannelRows rows{sources.first()->type(), group, true, {}};
    int index = 1;
    for (const auto &source : sources) {
        // Only the key tells the members of a group apart. It is filled in two steps, as the format has it: a
        // group name that holds a placeholder takes the index.
        const QString key = index == 1 ? group : u"%1[%2]"_s.arg(group).arg(index);
        rows.addPins(netlist.getPartByName(source->part), key, group);
        ++index;
    }
    return rows;
}
}

QString ChannelRows::comment() const
{
    return (isGroup ? u"Type %1, Group %2"_s : u"Type %1, Reference %2"_s).arg(type, name);
}

void ChannelRows::addPins(const QSharedPointer<EDAPart> &part, const QString &keyPrefix, const QString &valuePrefix)
{
    if (part.isNull())
        return;
    for (const auto &pin : std::as_const(part->pins)) {
        if (pin)
            entries.append({u"%1.%2"_s.arg(keyPrefix, pin->name), u"%1!%2"_s.arg(valuePrefix, pin->name)});
    }
}

ChannelTables::ChannelTables(const EDAProvider &testSystem, const EDAProvider &application, const QStringList &dutTypes,
                             const QStringList &sourceTypes)
    : testSystemProvider(testSystem)
    , applicationProvider(application)
    , sources(componentsOfTypes(testSystem, sourceTypes))
{
    const auto duts = componentsOfTypes(application, dutTypes);
    for (const auto &dut : duts) {
        const int bench = dut->bench().toInt();
        if (bench > 0)
            dutsByBench[bench].append(dut);
    }
}

int ChannelTables::benchCount() const
{
    return dutsByBench.isEmpty() ? 1 : dutsByBench.lastKey();
}

QList<int> ChannelTables::benchesWithDuts() const
{
    return dutsByBench.keys();
}

ChannelTable ChannelTables::ofDuts(int bench) const
{
    ChannelTable table;
    const auto duts = dutsByBench.value(bench);
    for (const auto &dut : duts)
        table.append(rowsOf(*dut, applicationProvider.getPartByName(dut->part), dut->group(), dut->identifier()));
    return table;
}

ChannelTable ChannelTables::ofSources() const
{
    ChannelTable table;
    for (const auto &source : sources)
        table.append(rowsOf(*source, testSystemProvider.getPartByName(source->part), deviceName(*source), source->ref));
    const auto groups = byGroup(sources);
    for (auto group = groups.cbegin(); group != groups.cend(); ++group)
        table.append(rowsOfGroup(testSystemProvider, group.key(), *group));
    return table;
}
}
