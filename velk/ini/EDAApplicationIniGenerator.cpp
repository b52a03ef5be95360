#include <velk/ini/EDAApplicationIniGenerator.h>

#include <velk/ini/ChannelTables.h>
#include <velk/ini/IniInspection.h>
#include <velk/ini/TypedComponents.h>
#include <velkini/IniWriter.h>

#include <numeric>

using namespace Qt::StringLiterals;

namespace Velk {

const QString EDAApplicationIniGenerator::DEFAULT_DUT_COMPONENT_TYPE = u"Dut"_s;
const QString EDAApplicationIniGenerator::DEFAULT_SOURCE_COMPONENT_TYPE = u"Source"_s;
const int EDAApplicationIniGenerator::MAX_BENCHES = 10'000;

namespace {

/// 400 sources of 50 pins on 32 benches need less than a million.
constexpr qint64 mostEntries = 5'000'000;

qint64 entryCount(const ChannelTable &table)
{
    return std::accumulate(table.cbegin(), table.cend(), qint64(0),
                           [](qint64 count, const ChannelRows &rows) { return count + rows.entries.size(); });
}

// Counted without overflow up to the largest int, which a property may hold.
template <typename Write>
void forEachBench(int benchCount, Write write)
{
    for (qint64 bench = 1; bench <= benchCount; ++bench)
        write(static_cast<int>(bench));
}

QString logicalBenchName(int bench)
{
    return u"DUT%1"_s.arg(bench <= 1 ? QString() : QString::number(bench));
}

QString physicalBenchName(int bench)
{
    return u"bench->%1"_s.arg(logicalBenchName(bench));
}

// With a number for the first bench too, unlike the bench's own names: the format wants it so.
QString appChannelTableName(int bench)
{
    return u"io_channel->ROUTE%1"_s.arg(bench);
}

template <typename Writer>
void writeTable(Writer &writer, const ChannelTable &table)
{
    for (const ChannelRows &rows : table) {
        writer.writeComment(rows.comment());
        for (const auto &[key, value] : rows.entries)
            writer.writeProperty(key, value, {});
    }
}

template <typename Writer>
void writeBenches(Writer &writer, const ChannelTables &tables)
{
    const ChannelTable sources = tables.ofSources();
    forEachBench(tables.benchCount(), [&](int bench) {
        writer.writeSection(physicalBenchName(bench), {});
        writer.writeProperty(u"AppChannelTable"_s, appChannelTableName(bench), {});
        writer.writeSection(appChannelTableName(bench), {});
        writeTable(writer, tables.ofDuts(bench));
        writeTable(writer, sources);
    });
}
}

class EDAApplicationIniGeneratorPrivate : public QSharedData
{
public:
    EDAApplicationIniGeneratorPrivate(EDAProvider *testSystem, EDAProvider *application)
        : testSystemProvider(testSystem)
        , applicationProvider(application)
    {
    }

    EDAProvider *testSystemProvider;
    EDAProvider *applicationProvider;
    QStringList componentTypesDut{EDAApplicationIniGenerator::DEFAULT_DUT_COMPONENT_TYPE};
    const QStringList componentTypesSource{EDAApplicationIniGenerator::DEFAULT_SOURCE_COMPONENT_TYPE};
};

EDAApplicationIniGenerator::EDAApplicationIniGenerator(EDAProvider *testSystem, EDAProvider *application)
    : d(new EDAApplicationIniGeneratorPrivate(testSystem, application))
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
    d->componentTypesDut = types;
}

QList<QSharedPointer<EDAComponent>> EDAApplicationIniGenerator::duts() const
{
    return componentsOfTypes(*d->applicationProvider, d->componentTypesDut);
}

QList<QSharedPointer<EDAComponent>> EDAApplicationIniGenerator::sources() const
{
    return componentsOfTypes(*d->testSystemProvider, d->componentTypesSource);
}

QString EDAApplicationIniGenerator::oversize() const
{
    const auto components = duts();
    for (const auto &dut : components) {
        if (dut->bench().toInt() > MAX_BENCHES)
            return u"%1: Bench=%2: there may be %3 benches at most"_s.arg(dut->ref, dut->bench(),
                                                                          QString::number(MAX_BENCHES));
    }
    const qint64 entriesOfTable = entryCount(tables().ofSources());
    for (const auto &dut : components) {
        const qint64 entries = entriesOfTable * dut->bench().toInt();
        if (entries > mostEntries)
            return u"%1: Bench=%2: with the sources in as many channel tables there would be %3 entries; there may be %4 at most"_s
                .arg(dut->ref, dut->bench(), QString::number(entries), QString::number(mostEntries));
    }
    return {};
}

void EDAApplicationIniGenerator::generate(QIODevice *device, const QString &testSystemEdaNet,
                                          const QString &applicationEdaNet) const
{
    IniWriter writer(device);
    writer.open();
    writeTo(writer, testSystemEdaNet, applicationEdaNet);
    writer.close();
}

QStringList EDAApplicationIniGenerator::warnings(const QString &testSystemEdaNet,
                                                 const QString &applicationEdaNet) const
{
    IniInspection inspection;
    writeTo(inspection, testSystemEdaNet, applicationEdaNet);
    return inspection.warnings();
}

template <typename Writer>
void EDAApplicationIniGenerator::writeTo(Writer &writer, const QString &testSystemEdaNet,
                                         const QString &applicationEdaNet) const
{
    writer.writeSection(u"ResourceManager"_s, {});
    writer.writeProperty(u"TestSystemEdaNet"_s, testSystemEdaNet, {});
    writer.writeProperty(u"ApplicationEdaNet"_s, applicationEdaNet, {});

    const ChannelTables channels = tables();
    writer.writeSection(u"LogicalNames"_s, {});
    forEachBench(channels.benchCount(),
                 [&](int bench) { writer.writeProperty(logicalBenchName(bench), physicalBenchName(bench), {}); });
    writeBenches(writer, channels);
}

ChannelTables EDAApplicationIniGenerator::tables() const
{
    return {*d->testSystemProvider, *d->applicationProvider, d->componentTypesDut, d->componentTypesSource};
}
}
