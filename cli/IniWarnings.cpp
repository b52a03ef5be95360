#include "cli/IniWarnings.h"

#include "cli/CommandError.h"

#include <velk/ini/EDAApplicationIniGenerator.h>

#include <QMap>
#include <QSet>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

constexpr int mostBenches = 10'000;

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

QStringList partWarning(const EDAProvider &netlist, const EDAComponent &component)
{
    if (netlist.getPartByName(component.part))
        return {};
    return {u"%1: its part '%2' is unknown, so none of its pins is written"_s.arg(component.ref, component.part)};
}

/// For each of these properties that is missing; it leaves an empty place in the component's entries.
QStringList propertyWarnings(const EDAComponent &component, const QStringList &keys)
{
    QStringList warnings;
    for (const QString &key : keys) {
        if (component.property(key).isEmpty())
            warnings.append(u"%1: has no %2, which stays empty in its entries"_s.arg(component.ref, key));
    }
    return warnings;
}

/// The key of an entry, up to the first "=" that no backslash precedes. Where all do, the backslash is the key's own.
QByteArray keyOf(const QByteArray &line)
{
    qsizetype sign = line.indexOf('=');
    while (sign > 0 && line.at(sign - 1) == '\\')
        sign = line.indexOf('=', sign + 1);
    return line.left(sign < 0 ? line.indexOf('=') : sign);
}
}

void checkBenchNumbers(const EDAProvider &application, const QStringList &dutTypes)
{
    const auto duts = componentsOf(application, dutTypes);
    for (const auto &dut : duts) {
        if (dut->bench().toInt() > mostBenches) {
            throw CommandError{u"%1: Bench=%2: there may be %3 benches at most"_s.arg(dut->ref, dut->bench(),
                                                                                      QString::number(mostBenches))};
        }
    }
}

QStringList deviceWarnings(const EDAProvider &netlist, const QStringList &types)
{
    if (!componentsOf(netlist, types).isEmpty())
        return {};
    return {u"there is no device: no component has the CompType %1"_s.arg(types.join(u" or "_s))};
}

QStringList dutWarnings(const EDAProvider &application, const QStringList &dutTypes)
{
    QStringList warnings;
    const auto duts = componentsOf(application, dutTypes);
    if (duts.isEmpty())
        warnings.append(u"there is no DUT: no component has the CompType %1"_s.arg(dutTypes.join(u" or "_s)));
    for (const auto &dut : duts) {
        if (dut->bench().toInt() < 1)
            warnings.append(
                u"%1: a DUT on no bench (Bench=%2), so it is written nowhere"_s.arg(dut->ref, dut->bench()));
        warnings += propertyWarnings(*dut, {EDAComponent::GROUP, EDAComponent::IDENTIFER});
        warnings += partWarning(application, *dut);
    }
    return warnings;
}

QStringList sourceWarnings(const EDAProvider &testSystem)
{
    QStringList warnings;
    const auto sources = componentsOf(testSystem, {EDAApplicationIniGenerator::DEFAULT_SOURCE_COMPONENT_TYPE});
    if (sources.isEmpty())
        warnings.append(u"there is no source: no component has the CompType Source"_s);
    for (const auto &source : sources) {
        warnings += propertyWarnings(*source, {EDAComponent::DEVICE, EDAComponent::DEVICE_NUMBER});
        warnings += partWarning(testSystem, *source);
    }
    return warnings;
}

QStringList duplicateKeyWarnings(const QByteArray &ini)
{
    QStringList warnings;
    QByteArray section;
    QMap<QByteArray, int> countOfKey; // in the section
    QSet<QByteArray> reported;        // many sections hold the same entries
    const auto lines = ini.split('\n');
    for (const QByteArray &line : lines) {
        if (line.startsWith('[')) {
            section = line.trimmed();
            countOfKey.clear();
            continue;
        }
        const QByteArray key = keyOf(line);
        if (!line.contains('=') || line.startsWith(';') || ++countOfKey[key] != 2 || reported.contains(key))
            continue;
        reported.insert(key);
        warnings.append(
            u"%1: the key %2 occurs more than once"_s.arg(QString::fromUtf8(section), QString::fromUtf8(key)));
    }
    return warnings;
}
}
