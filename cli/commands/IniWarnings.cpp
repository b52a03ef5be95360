#include "cli/commands/IniWarnings.h"

#include <velk/check/SystemCheck.h>
#include <velk/ini/EDAApplicationIniGenerator.h>
#include <velk/ini/EDAPhysicalIniGenerator.h>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

using Components = QList<QSharedPointer<EDAComponent>>;

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
