#include <velk/ini/EDAApplicationIniGenerator.h>

#include <velkini/IniWriter.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace Velk {

const QString EDAApplicationIniGenerator::DEFAULT_DUT_COMPONENT_TYPE = u"Dut"_s;
const QString EDAApplicationIniGenerator::DEFAULT_SOURCE_COMPONENT_TYPE = u"Source"_s;

namespace {

// A property for each pin, the pin's name behind both prefixes.
void writePins(IniWriter &writer, const QSharedPointer<EDAPart> &part, const QString &keyPrefix,
               const QString &valuePrefix)
{
    if (part.isNull())
        return;
    for (const auto &pin : std::as_const(part->pins)) {
        writer.writeProperty(u"%1.%2"_s.arg(keyPrefix, pin->name), u"%1!%2"_s.arg(valuePrefix, pin->name), {});
    }
}

void writeTypeAndReference(IniWriter &writer, const EDAComponent &component)
{
    writer.writeComment(u"Type %1, Reference %2"_s.arg(component.type(), component.ref));
}

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
    const int benchCount = determineBenchCount();
    writeLogicalNames(writer, benchCount);
    writeBenches(writer, benchCount);
    writer.close();
}

bool EDAApplicationIniGenerator::isDut(const QSharedPointer<EDAComponent> &component) const
{
    return componentTypesDut.contains(component->type(), Qt::CaseInsensitive);
}

bool EDAApplicationIniGenerator::isSourceComponent(const QSharedPointer<EDAComponent> &component) const
{
    return componentTypesSource.contains(component->type(), Qt::CaseInsensitive);
}

EDAApplicationIniGenerator::Components EDAApplicationIniGenerator::duts() const
{
    Components result;
    const auto components = applicationProvider->getComponents();
    std::copy_if(components.cbegin(), components.cend(), std::back_inserter(result),
                 [this](const auto &component) { return isDut(component); });
    return result;
}

EDAApplicationIniGenerator::Components EDAApplicationIniGenerator::dutsOfBench(int bench) const
{
    Components result;
    const auto allDuts = duts();
    std::copy_if(allDuts.cbegin(), allDuts.cend(), std::back_inserter(result),
                 [bench](const auto &dut) { return dut->bench().toInt() == bench; });
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

QMap<QString, EDAApplicationIniGenerator::Components> EDAApplicationIniGenerator::sourceComponentsByGroup() const
{
    QMap<QString, Components> groups;
    const auto sources = sourceComponents();
    for (const auto &source : sources) {
        if (!source->group().isEmpty())
            groups[source->group()].append(source);
    }
    return groups;
}

int EDAApplicationIniGenerator::determineBenchCount() const
{
    int count = 1;
    const auto allDuts = duts();
    for (const auto &dut : allDuts)
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

void EDAApplicationIniGenerator::writeBenches(IniWriter &writer, int benchCount) const
{
    forEachBench(benchCount, [&](int bench) {
        writeBench(writer, bench);
        writeAppChannelTable(writer, bench);
    });
}

void EDAApplicationIniGenerator::writeBench(IniWriter &writer, int bench)
{
    writer.writeSection(physicalBenchName(bench), {});
    writer.writeProperty(u"AppChannelTable"_s, appChannelTableName(bench), {});
}

void EDAApplicationIniGenerator::writeAppChannelTable(IniWriter &writer, int bench) const
{
    writer.writeSection(appChannelTableName(bench), {});
    writeDuts(writer, bench);
    writeSourceComponents(writer);
    writeGroupComponents(writer);
}

void EDAApplicationIniGenerator::writeDuts(IniWriter &writer, int bench) const
{
    const auto dutsOnIt = dutsOfBench(bench);
    for (const auto &dut : dutsOnIt)
        writeDut(writer, dut);
}

void EDAApplicationIniGenerator::writeDut(IniWriter &writer, const QSharedPointer<EDAComponent> &dut) const
{
    writeTypeAndReference(writer, *dut);
    writePins(writer, applicationProvider->getPartByName(dut->part), dut->group(), dut->identifier());
}

void EDAApplicationIniGenerator::writeSourceComponents(IniWriter &writer) const
{
    const auto sources = sourceComponents();
    for (const auto &source : sources)
        writeSourceComponent(writer, source);
}

void EDAApplicationIniGenerator::writeSourceComponent(IniWriter &writer,
                                                      const QSharedPointer<EDAComponent> &source) const
{
    writeTypeAndReference(writer, *source);
    writePins(writer, testSystemProvider->getPartByName(source->part), deviceName(*source), source->ref);
}

void EDAApplicationIniGenerator::writeGroupComponents(IniWriter &writer) const
{
    const auto groups = sourceComponentsByGroup();
    for (const auto &sources : groups)
        writeComponentsOfOneGroup(writer, sources);
}

void EDAApplicationIniGenerator::writeComponentsOfOneGroup(IniWriter &writer, const Components &sources) const
{
    writer.writeComment(u"Type %1, Group %2"_s.arg(sources.first()->type(), sources.first()->group()));
    int index = 1;
    for (const auto &source : sources)
        writeGroupComponent(writer, source, index++);
}

void EDAApplicationIniGenerator::writeGroupComponent(IniWriter &writer, const QSharedPointer<EDAComponent> &source,
                                                     int index) const
{
    // Only the key tells the members of a group apart. It is filled in two steps, as the format has it: a
    // group name that holds a placeholder takes the index.
    const QString key = index == 1 ? source->group() : u"%1[%2]"_s.arg(source->group()).arg(index);
    writePins(writer, testSystemProvider->getPartByName(source->part), key, source->group());
}
}
