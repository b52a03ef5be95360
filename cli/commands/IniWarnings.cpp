#include "cli/commands/IniWarnings.h"

#include "cli/terminal/CommandError.h"

#include <velk/check/SystemCheck.h>
#include <velk/ini/EDAApplicationIniGenerator.h>
#include <velk/ini/EDAPhysicalIniGenerator.h>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

using Components = QList<QSharedPointer<EDAComponent>>;

/// 400 sources of 50 pins on 32 benches need less than a million.
constexpr qint64 mostEntries = 5'000'000;

QString thereIsNo(const QString &what, const QStringList &types)
{
    return u"there is no %1: no component has the CompType %2"_s.arg(what, types.join(u" or "_s));
}

QStringList messagesOf(const Components &components, QList<Finding> (*findingsOf)(const EDAComponent &))
{
    QStringList messages;
    for (const auto &component : components) {
        const auto findings = findingsOf(*component);
        for (const Finding &finding : findings)
            messages.append(finding.message());
    }
    return messages;
}
}

void checkBenchNumbers(const EDAApplicationIniGenerator &generator)
{
    const auto duts = generator.duts();
    for (const auto &dut : duts) {
        if (dut->bench().toInt() > SystemCheck::MAX_BENCHES) {
            throw CommandError{u"%1: Bench=%2: there may be %3 benches at most"_s.arg(
                dut->ref, dut->bench(), QString::number(SystemCheck::MAX_BENCHES))};
        }
    }
    const qint64 entriesOfTable = generator.sourceEntryCount();
    for (const auto &dut : duts) {
        const qint64 entries = entriesOfTable * dut->bench().toInt();
        if (entries > mostEntries) {
            throw CommandError{
                u"%1: Bench=%2: with the sources in as many channel tables there would be %3 entries; there may be %4 at most"_s
                    .arg(dut->ref, dut->bench(), QString::number(entries), QString::number(mostEntries))};
        }
    }
}

QStringList deviceWarnings(const EDAPhysicalIniGenerator &generator, const QStringList &types)
{
    return generator.devices().isEmpty() ? QStringList{thereIsNo(u"device"_s, types)} : QStringList();
}

QStringList dutWarnings(const EDAApplicationIniGenerator &generator, const QStringList &dutTypes)
{
    const auto duts = generator.duts();
    return duts.isEmpty() ? QStringList{thereIsNo(u"DUT"_s, dutTypes)} : messagesOf(duts, SystemCheck::findingsOfDut);
}

QStringList sourceWarnings(const EDAApplicationIniGenerator &generator)
{
    const auto sources = generator.sources();
    if (sources.isEmpty())
        return {thereIsNo(u"source"_s, {EDAApplicationIniGenerator::DEFAULT_SOURCE_COMPONENT_TYPE})};
    return messagesOf(sources, SystemCheck::findingsOfSource);
}
}
