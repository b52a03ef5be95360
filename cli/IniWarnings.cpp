#include "cli/IniWarnings.h"

#include "cli/CommandError.h"

#include <velk/ini/EDAApplicationIniGenerator.h>

#include <QMap>

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

/// The key of an entry, up to the first "=" that no backslash precedes.
QByteArray keyOf(const QByteArray &line)
{
    qsizetype sign = line.indexOf('=');
    while (sign > 0 && line.at(sign - 1) == '\\')
        sign = line.indexOf('=', sign + 1);
    return line.left(sign);
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
        for (const QString &key : {EDAComponent::DEVICE, EDAComponent::DEVICE_NUMBER}) {
            if (source->property(key).isEmpty())
                warnings.append(u"%1: a source without %2, which stays empty in its keys"_s.arg(source->ref, key));
        }
        warnings += partWarning(testSystem, *source);
    }
    return warnings;
}

QStringList duplicateKeyWarnings(const QByteArray &ini)
{
    QStringList warnings;
    QByteArray section;
    QMap<QByteArray, int> countOfKey;
    const auto lines = ini.split('\n');
    for (const QByteArray &line : lines) {
        if (line.startsWith('[')) {
            section = line;
            countOfKey.clear();
        } else if (!line.isEmpty() && !line.startsWith(';') && ++countOfKey[keyOf(line)] == 2) {
            warnings.append(u"%1: the key %2 occurs more than once"_s.arg(QString::fromUtf8(section),
                                                                          QString::fromUtf8(keyOf(line))));
        }
    }
    return warnings;
}
}
