#include "velk/check/IniChecks.h"

#include "cli/IniEntries.h"
#include "velk/check/ProviderView.h"

#include <velk/ini/EDAApplicationIniGenerator.h>

#include <QBuffer>
#include <QMap>

#include <set>
#include <utility>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

using Components = QList<QSharedPointer<EDAComponent>>;

/// For each of these properties that is missing; it leaves an empty place in the component's entries.
QList<Finding> missingProperties(FindingCode code, const EDAComponent &component, const QStringList &keys)
{
    QList<Finding> findings;
    for (const QString &key : keys) {
        if (component.property(key).isEmpty())
            findings.append(
                {code, {component.ref}, u"has no %1, which stays empty in its entries"_s.arg(key), {component.ref}});
    }
    return findings;
}

Components sourcesOf(const CheckedSystem &system)
{
    return componentsOf(system.netlists(), {EDAApplicationIniGenerator::DEFAULT_SOURCE_COMPONENT_TYPE});
}

Components dutsOf(const CheckedSystem &system)
{
    return componentsOf(system.netlists(), system.types().duts);
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

QList<Finding> benchFindings(const Components &duts)
{
    QMap<int, QString> refOfBench;
    QList<Finding> findings;
    for (const auto &dut : duts) {
        const int bench = dut->bench().toInt();
        if (bench > mostBenches)
            findings.append({FindingCode::BenchWithoutDut,
                             {dut->ref},
                             u"on Bench %1, for which velk ini writes no file: there may be %2 benches at most"_s.arg(
                                 QString::number(bench), QString::number(mostBenches)),
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

/// The application INI of these alone.
QByteArray applicationIni(const EDAProvider &netlists, const Components &sources, const Components &duts,
                          const QStringList &dutTypes)
{
    ProviderView testSystem(netlists, sources);
    ProviderView application(netlists, duts);
    EDAApplicationIniGenerator generator(&testSystem, &application);
    generator.setComponentTypesDut(dutTypes);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    generator.generate(&buffer, {}, {});
    return buffer.data();
}

/// Keys that occur twice in a channel table, for each pair of components or groups that they are of.
class DuplicateKeys
{
public:
    explicit DuplicateKeys(const EDAProvider &netlists)
        : provider(netlists)
    {
    }

    /// Their entries stand in every channel table.
    void addSources(const QByteArray &ini)
    {
        forEachIniEntry(ini, [this](const IniEntry &entry) {
            if (!entry.comment.isEmpty())
                insert(sourceKeys, entry);
        });
    }

    void addDuts(const QByteArray &ini)
    {
        QByteArray section;
        QHash<QByteArray, QByteArray> keys;
        forEachIniEntry(ini, [&](const IniEntry &entry) {
            if (entry.section != section)
                keys.clear();
            section = entry.section;
            if (entry.comment.isEmpty())
                return;
            if (sourceKeys.contains(entry.key))
                addDuplicate(sourceKeys.value(entry.key), entry);
            else
                insert(keys, entry);
        });
    }

    QList<Finding> findings() const
    {
        QList<Finding> result;
        for (auto it = keysOfOwners.cbegin(); it != keysOfOwners.cend(); ++it) {
            QStringList owners{ownerName(it.key().first), ownerName(it.key().second)};
            owners.removeDuplicates();
            QStringList refs;
            for (const QString &owner : std::as_const(owners)) {
                if (provider.getComponentByRef(owner))
                    refs.append(owner);
            }
            QStringList keys;
            for (const QByteArray &key : it.value())
                keys.append(u"'%1'"_s.arg(QString::fromUtf8(key)));
            result.append({FindingCode::DuplicateIniKey, owners,
                           u"more than one entry in a channel table for "_s + listed(keys), refs});
        }
        return result;
    }

private:
    void insert(QHash<QByteArray, QByteArray> &keys, const IniEntry &entry)
    {
        const auto known = keys.constFind(entry.key);
        if (known == keys.cend())
            keys.insert(entry.key, entry.comment);
        else
            addDuplicate(*known, entry);
    }

    void addDuplicate(const QByteArray &firstOwner, const IniEntry &entry)
    {
        keysOfOwners[{firstOwner, entry.comment}].insert(entry.key);
    }

    /// Of the comment "Type TYPE, Reference REF" or "Type TYPE, Group GROUP".
    static QString ownerName(const QByteArray &comment)
    {
        const QString text = QString::fromUtf8(comment);
        const QString reference = u", Reference "_s;
        const qsizetype position = text.lastIndexOf(reference);
        return position < 0 ? u"group '%1'"_s.arg(text.section(u", Group "_s, 1))
                            : text.mid(position + reference.size());
    }

    const EDAProvider &provider;
    QHash<QByteArray, QByteArray> sourceKeys; ///< with the comment above the entry
    QMap<std::pair<QByteArray, QByteArray>, std::set<QByteArray>> keysOfOwners;
};

QList<Finding> duplicateKeyFindings(const CheckedSystem &system)
{
    Components duts;
    for (const auto &dut : dutsOf(system)) {
        if (dut->bench().toInt() <= mostBenches)
            duts.append(dut);
    }
    DuplicateKeys duplicates(system.netlists());
    duplicates.addSources(applicationIni(system.netlists(), sourcesOf(system), {}, {}));
    duplicates.addDuts(applicationIni(system.netlists(), {}, duts, system.types().duts));
    return duplicates.findings();
}
}

QList<QSharedPointer<EDAComponent>> componentsOf(const EDAProvider &netlist, const QStringList &types)
{
    QList<QSharedPointer<EDAComponent>> result;
    const auto components = netlist.getComponents();
    for (const auto &component : components) {
        if (types.contains(component->type(), Qt::CaseInsensitive))
            result.append(component);
    }
    return result;
}

QList<Finding> dutFindings(const EDAComponent &dut)
{
    QList<Finding> findings;
    if (dut.bench().toInt() < 1)
        findings.append({FindingCode::DutWithoutBench,
                         {dut.ref},
                         u"a DUT on no bench (Bench=%1), so it is written nowhere"_s.arg(dut.bench()),
                         {dut.ref}});
    return findings +
           missingProperties(FindingCode::DutWithoutName, dut, {EDAComponent::GROUP, EDAComponent::IDENTIFER});
}

QList<Finding> sourceFindings(const EDAComponent &source)
{
    return missingProperties(FindingCode::SourceWithoutDevice, source,
                             {EDAComponent::DEVICE, EDAComponent::DEVICE_NUMBER});
}

QList<Finding> iniFindings(const CheckedSystem &system)
{
    QList<Finding> findings;
    for (const auto &source : sourcesOf(system))
        findings += sourceFindings(*source);
    const auto duts = dutsOf(system);
    for (const auto &dut : duts)
        findings += dutFindings(*dut);
    return findings + duplicateKeyFindings(system) + benchFindings(duts);
}
}
