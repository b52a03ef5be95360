#include "cli/IniWarnings.h"

#include "cli/CommandError.h"
#include "cli/IniEntries.h"
#include "cli/check/IniChecks.h"

#include <velk/ini/EDAApplicationIniGenerator.h>

#include <QMap>
#include <QSet>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

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
        messages.append(finding.message);
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

QStringList duplicateKeyWarnings(const QByteArray &ini)
{
    QStringList warnings;
    QByteArray section;
    QMap<QByteArray, int> countOfKey; // in the section
    QSet<QByteArray> reported;        // many sections hold the same entries
    forEachIniEntry(ini, [&](const IniEntry &entry) {
        if (entry.section != section)
            countOfKey.clear();
        section = entry.section;
        if (++countOfKey[entry.key] != 2 || reported.contains(entry.key))
            return;
        reported.insert(entry.key);
        warnings.append(
            u"%1: the key %2 occurs more than once"_s.arg(QString::fromUtf8(section), QString::fromUtf8(entry.key)));
    });
    return warnings;
}
}
