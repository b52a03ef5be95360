#include "cli/commands/IniWarnings.h"

#include "cli/terminal/CommandError.h"
#include "velk/check/IniChecks.h"

#include <velk/ini/EDAApplicationIniGenerator.h>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

/// 400 sources of 50 pins on 32 benches need less than a million.
constexpr qint64 mostEntries = 5'000'000;

QStringList partWarning(const EDAProvider &netlist, const EDAComponent &component)
{
    if (netlist.getPartByName(component.part))
        return {};
    return {u"%1: its part '%2' is unknown, so none of its pins is written"_s.arg(component.ref, component.part)};
}

QStringList messagesOf(const QList<Finding> &findings)
{
    QStringList messages;
    for (const Finding &finding : findings)
        messages.append(messageOf(finding));
    return messages;
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

void checkNumberOfEntries(const EDAProvider &testSystem, const EDAProvider &application, const QStringList &dutTypes)
{
    qint64 entriesOfTable = 0;
    const auto sources = componentsOf(testSystem, {EDAApplicationIniGenerator::DEFAULT_SOURCE_COMPONENT_TYPE});
    for (const auto &source : sources) {
        if (const auto part = testSystem.getPartByName(source->part))
            entriesOfTable += part->pins.size() * (source->group().isEmpty() ? 1 : 2);
    }
    const auto duts = componentsOf(application, dutTypes);
    for (const auto &dut : duts) {
        const qint64 entries = entriesOfTable * dut->bench().toInt();
        if (entries > mostEntries) {
            throw CommandError{
                u"%1: Bench=%2: with the sources in as many channel tables there would be %3 entries; there may be %4 at most"_s
                    .arg(dut->ref, dut->bench(), QString::number(entries), QString::number(mostEntries))};
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
        warnings += messagesOf(dutFindings(*dut));
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
        warnings += messagesOf(sourceFindings(*source));
        warnings += partWarning(testSystem, *source);
    }
    return warnings;
}
}
