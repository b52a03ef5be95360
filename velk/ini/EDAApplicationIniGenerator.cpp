#include <velk/ini/EDAApplicationIniGenerator.h>

#include <velkini/IniWriter.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace Velk {

const QString EDAApplicationIniGenerator::DEFAULT_DUT_COMPONENT_TYPE = u"Dut"_s;
const QString EDAApplicationIniGenerator::DEFAULT_SOURCE_COMPONENT_TYPE = u"Source"_s;

namespace {

QString deviceName(const EDAComponent &source)
{
    const QString name = u"%1-No%2"_s.arg(source.device(), source.deviceNumber());
    return source.channel().isEmpty() ? name : u"%1-Ch%2"_s.arg(name, source.channel());
}

// Counted without overflow up to the largest int, which a property may hold.
template <typename Write>
void forEachBench(int benchCount, Write write)
{
    for (qint64 bench = 1; bench <= benchCount; ++bench)
        write(static_cast<int>(bench));
}
}

/// What stands in a channel table below its name, in order.
class EDAApplicationIniGenerator::ChannelTable
{
public:
    void addComment(const QString &text) { lines.append({{}, text, true}); }

    void addTypeAndReference(const EDAComponent &component)
    {
        addComment(u"Type %1, Reference %2"_s.arg(component.type(), component.ref));
    }

    /// An entry for each pin, the pin's name behind both prefixes.
    void addPins(const QSharedPointer<EDAPart> &part, const QString &keyPrefix, const QString &valuePrefix)
    {
        if (part.isNull())
            return;
        for (const auto &pin : std::as_const(part->pins)) {
            if (pin)
                lines.append({u"%1.%2"_s.arg(keyPrefix, pin->name), u"%1!%2"_s.arg(valuePrefix, pin->name), false});
        }
    }

    void write(IniWriter &writer) const
    {
        for (const Line &line : lines) {
            if (line.isComment)
                writer.writeComment(line.text);
            else
                writer.writeProperty(line.key, line.text, {});
        }
    }

private:
    struct Line
    {
        QString key;
        QString text; ///< value or comment
        bool isComment;
    };
    QList<Line> lines;
};

EDAApplicationIniGenerator::EDAApplicationIniGenerator(EDAProvider *testSystem, EDAProvider *application)
    : testSystemProvider(testSystem)
    , applicationProvider(application)
    , componentTypesDut{DEFAULT_DUT_COMPONENT_TYPE}
    , componentTypesSource{DEFAULT_SOURCE_COMPONENT_TYPE}
{
}

EDAApplicationIniGenerator::~EDAApplicationIniGenerator() = default;
EDAApplicationIniGenerator::EDAApplicationIniGenerator(const EDAApplicationIniGenerator &other) = default;
EDAApplicationIniGenerator &EDAApplicationIniGenerator::operator=(const EDAApplicationIniGenerator &other) = default;
EDAApplicationIniGenerator::EDAApplicationIniGenerator(EDAApplicationIniGenerator &&other) noexcept = default;
EDAApplicationIniGenerator &
EDAApplicationIniGenerator::operator=(EDAApplicationIniGenerator &&other) noexcept = default;

void EDAApplicationIniGenerator::setComponentTypesDut(const QList<QString> &types)
{
    componentTypesDut = types;
}

void EDAApplicationIniGenerator::generate(QIODevice *device, const QString &testSystemEdaNet,
                                          const QString &applicationEdaNet) const
{
    IniWriter writer(device);
    writer.open();
    writeGlobalParameters(writer, testSystemEdaNet, applicationEdaNet);
    const Components allDuts = duts();
    const int benchCount = determineBenchCount(allDuts);
    writeLogicalNames(writer, benchCount);
    writeBenches(writer, benchCount, allDuts);
    writer.close();
}

bool EDAApplicationIniGenerator::isDut(const QSharedPointer<EDAComponent> &component) const
{
    return component && componentTypesDut.contains(component->type(), Qt::CaseInsensitive);
}

bool EDAApplicationIniGenerator::isSourceComponent(const QSharedPointer<EDAComponent> &component) const
{
    return component && componentTypesSource.contains(component->type(), Qt::CaseInsensitive);
}

EDAApplicationIniGenerator::Components EDAApplicationIniGenerator::duts() const
{
    Components result;
    const auto components = applicationProvider->getComponents();
    std::copy_if(components.cbegin(), components.cend(), std::back_inserter(result),
                 [this](const auto &component) { return isDut(component); });
    return result;
}

EDAApplicationIniGenerator::Components EDAApplicationIniGenerator::sourceComponents() const
{
    Components result;
    const auto components = testSystemProvider->getComponents();
    std::copy_if(components.cbegin(), components.cend(), std::back_inserter(result),
                 [this](const auto &component) { return isSourceComponent(component); });
    return result;
}

QMap<int, EDAApplicationIniGenerator::Components> EDAApplicationIniGenerator::byBench(const Components &duts)
{
    QMap<int, Components> benches;
    for (const auto &dut : duts)
        benches[dut->bench().toInt()].append(dut);
    return benches;
}

QMap<QString, EDAApplicationIniGenerator::Components> EDAApplicationIniGenerator::byGroup(const Components &sources)
{
    QMap<QString, Components> groups;
    for (const auto &source : sources) {
        if (!source->group().isEmpty())
            groups[source->group()].append(source);
    }
    return groups;
}

int EDAApplicationIniGenerator::determineBenchCount(const Components &duts)
{
    int count = 1;
    for (const auto &dut : duts)
        count = std::max(count, dut->bench().toInt());
    return count;
}

QString EDAApplicationIniGenerator::logicalBenchName(int bench)
{
    return u"DUT%1"_s.arg(bench <= 1 ? QString() : QString::number(bench));
}

QString EDAApplicationIniGenerator::physicalBenchName(int bench)
{
    return u"bench->%1"_s.arg(logicalBenchName(bench));
}

// With a number for the first bench too, unlike the bench's own names: the format wants it so.
QString EDAApplicationIniGenerator::appChannelTableName(int bench)
{
    return u"io_channel->ROUTE%1"_s.arg(bench);
}

void EDAApplicationIniGenerator::writeGlobalParameters(IniWriter &writer, const QString &testSystemEdaNet,
                                                       const QString &applicationEdaNet)
{
    writer.writeSection(u"ResourceManager"_s, {});
    writer.writeProperty(u"TestSystemEdaNet"_s, testSystemEdaNet, {});
    writer.writeProperty(u"ApplicationEdaNet"_s, applicationEdaNet, {});
}

void EDAApplicationIniGenerator::writeLogicalNames(IniWriter &writer, int benchCount)
{
    writer.writeSection(u"LogicalNames"_s, {});
    forEachBench(benchCount,
                 [&](int bench) { writer.writeProperty(logicalBenchName(bench), physicalBenchName(bench), {}); });
}

void EDAApplicationIniGenerator::writeBenches(IniWriter &writer, int benchCount, const Components &duts) const
{
    const auto dutsOfBench = byBench(duts);
    const ChannelTable sources = tableOfSources();
    forEachBench(benchCount, [&](int bench) {
        writeBench(writer, bench);
        writer.writeSection(appChannelTableName(bench), {});
        tableOfDuts(dutsOfBench.value(bench)).write(writer);
        sources.write(writer);
    });
}

void EDAApplicationIniGenerator::writeBench(IniWriter &writer, int bench)
{
    writer.writeSection(physicalBenchName(bench), {});
    writer.writeProperty(u"AppChannelTable"_s, appChannelTableName(bench), {});
}

EDAApplicationIniGenerator::ChannelTable EDAApplicationIniGenerator::tableOfDuts(const Components &duts) const
{
    ChannelTable table;
    for (const auto &dut : duts) {
        table.addTypeAndReference(*dut);
        table.addPins(applicationProvider->getPartByName(dut->part), dut->group(), dut->identifier());
    }
    return table;
}

EDAApplicationIniGenerator::ChannelTable EDAApplicationIniGenerator::tableOfSources() const
{
    ChannelTable table;
    const Components sources = sourceComponents();
    for (const auto &source : sources)
        addSource(table, *source);
    const auto groups = byGroup(sources);
    for (const Components &group : groups)
        addGroup(table, group);
    return table;
}

void EDAApplicationIniGenerator::addSource(ChannelTable &table, const EDAComponent &source) const
{
    table.addTypeAndReference(source);
    table.addPins(testSystemProvider->getPartByName(source.part), deviceName(source), source.ref);
}

void EDAApplicationIniGenerator::addGroup(ChannelTable &table, const Components &sources) const
{
    const QString group = sources.first()->group();
    table.addComment(u"Type %1, Group %2"_s.arg(sources.first()->type(), group));
    int index = 1;
    for (const auto &source : sources) {
        // Only the key tells the members of a group apart. It is filled in two steps, as the format has it: a
        // group name that holds a placeholder takes the index.
        const QString key = index == 1 ? group : u"%1[%2]"_s.arg(group).arg(index);
        table.addPins(testSystemProvider->getPartByName(source->part), key, group);
        ++index;
    }
}
}
