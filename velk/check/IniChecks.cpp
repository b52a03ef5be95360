#include <velk/check/IniChecks.h>

#include <velk/ini/ChannelTables.h>
#include <velk/ini/EDAApplicationIniGenerator.h>
#include <velk/ini/IniText.h>
#include <velk/ini/TypedComponents.h>

#include <QHash>
#include <QMap>

#include <map>
#include <set>
#include <utility>

using namespace Qt::StringLiterals;

namespace Velk {

namespace {

using Components = QList<QSharedPointer<EDAComponent>>;

/// For each of these properties that is missing; it leaves an empty place in the component's entries.
QList<SingleFinding> missingProperties(FindingCode code, const EDAComponent &component, const QStringList &keys)
{
    QList<SingleFinding> findings;
    for (const QString &key : keys) {
        if (component.property(key).isEmpty())
            findings.append(
                {code, {component.ref}, u"has no %1, which stays empty in its entries"_s.arg(key), {component.ref}});
    }
    return findings;
}

/// "2, 4 to 9": what is missing before each number.
QStringList gapsBefore(const QList<int> &numbers)
{
    QStringList gaps;
    int last = 0;
    for (const int number : numbers) {
        const int first = last + 1;
        if (number - first == 1)
            gaps.append(QString::number(first));
        else if (number > first)
            gaps.append(u"%1 to %2"_s.arg(first).arg(number - 1));
        last = number;
    }
    return gaps;
}

QList<SingleFinding> benchFindings(const Components &duts)
{
    QMap<int, QString> refOfBench;
    QList<SingleFinding> findings;
    for (const auto &dut : duts) {
        const int bench = dut->bench().toInt();
        if (bench > EDAApplicationIniGenerator::MAX_BENCHES)
            findings.append({FindingCode::BenchWithoutDut,
                             {dut->ref},
                             u"on Bench %1, for which velk ini writes no file: there may be %2 benches at most"_s.arg(
                                 QString::number(bench), QString::number(EDAApplicationIniGenerator::MAX_BENCHES)),
                             {dut->ref}});
        else if (bench > 0)
            refOfBench.insert(bench, dut->ref);
    }
    const QStringList gaps = gapsBefore(refOfBench.keys());
    if (!gaps.isEmpty())
        findings.append(
            {FindingCode::BenchWithoutDut,
             {refOfBench.last()},
             u"the highest Bench is %1, but no DUT is on %2"_s.arg(QString::number(refOfBench.lastKey()), listed(gaps)),
             {refOfBench.last()}});
    return findings;
}

/// Keys that occur twice in a channel table, for each pair of components or groups that they are of.
class DuplicateKeys
{
public:
    /// Their entries stand in every channel table.
    void addSources(const ChannelTable &table) { add(table, keysOfSources); }

    void addDuts(const ChannelTable &table)
    {
        Keys keys;
        add(table, keys);
    }

    QList<SingleFinding> findings() const
    {
        QList<SingleFinding> result;
        for (auto it = keysOfOwners.cbegin(); it != keysOfOwners.cend(); ++it) {
            const auto &[first, second] = it->first;
            QStringList owners{placeOf(first), placeOf(second)};
            owners.removeDuplicates();
            QStringList refs;
            for (const Owner &owner : {first, second}) {
                if (!owner.isGroup)
                    refs.append(owner.name);
            }
            refs.removeDuplicates();
            const QStringList keys(it->second.cbegin(), it->second.cend());
            result.append({FindingCode::DuplicateIniKey, owners,
                           u"more than one entry in a channel table for "_s + listedInQuotes(keys), refs});
        }
        return result;
    }

private:
    struct Owner
    {
        QString comment; ///< above its entries
        QString name;
        bool isGroup;

        bool operator<(const Owner &other) const { return comment < other.comment; }
    };
    using Keys = QHash<QString, Owner>; ///< as they are written

    void add(const ChannelTable &table, Keys &keys)
    {
        for (const ChannelRows &rows : table) {
            const Owner owner{rows.comment(), rows.name, rows.isGroup};
            for (const auto &entry : rows.entries)
                add(writtenIniKey(entry.first), owner, keys);
        }
    }

    void add(const QString &key, const Owner &owner, Keys &keys)
    {
        const auto ofSource = keysOfSources.constFind(key);
        const auto known = keys.constFind(key);
        if (ofSource != keysOfSources.cend())
            keysOfOwners[{*ofSource, owner}].insert(key);
        else if (known != keys.cend())
            keysOfOwners[{*known, owner}].insert(key);
        else
            keys.insert(key, owner);
    }

    static QString placeOf(const Owner &owner) { return owner.isGroup ? u"group '%1'"_s.arg(owner.name) : owner.name; }

    Keys keysOfSources;
    std::map<std::pair<Owner, Owner>, std::set<QString>> keysOfOwners;
};

QList<SingleFinding> duplicateKeyFindings(const CheckedSystem &system)
{
    const ChannelTables tables(system.netlists(), system.netlists(), system.types().duts,
                               {EDAApplicationIniGenerator::DEFAULT_SOURCE_COMPONENT_TYPE});
    DuplicateKeys duplicates;
    duplicates.addSources(tables.ofSources());
    const auto benches = tables.benchesWithDuts();
    for (const int bench : benches) {
        if (bench <= EDAApplicationIniGenerator::MAX_BENCHES)
            duplicates.addDuts(tables.ofDuts(bench));
    }
    return duplicates.findings();
}
}

QList<SingleFinding> dutFindings(const EDAComponent &dut)
{
    QList<SingleFinding> findings;
    if (dut.bench().toInt() < 1)
        findings.append({FindingCode::DutWithoutBench,
                         {dut.ref},
                         u"a DUT on no bench (Bench=%1), so it is written nowhere"_s.arg(dut.bench()),
                         {dut.ref}});
    return findings +
           missingProperties(FindingCode::DutWithoutName, dut, {EDAComponent::GROUP, EDAComponent::IDENTIFER});
}

QList<SingleFinding> sourceFindings(const EDAComponent &source)
{
    return missingProperties(FindingCode::SourceWithoutDevice, source,
                             {EDAComponent::DEVICE, EDAComponent::DEVICE_NUMBER});
}

QList<SingleFinding> iniFindings(const CheckedSystem &system)
{
    QList<SingleFinding> findings;
    const auto sources =
        componentsOfTypes(system.netlists(), {EDAApplicationIniGenerator::DEFAULT_SOURCE_COMPONENT_TYPE});
    for (const auto &source : sources)
        findings += sourceFindings(*source);
    const auto duts = componentsOfTypes(system.netlists(), system.types().duts);
    for (const auto &dut : duts)
        findings += dutFindings(*dut);
    return findings + duplicateKeyFindings(system) + benchFindings(duts);
}
}
