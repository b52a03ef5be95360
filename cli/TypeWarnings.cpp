#include "cli/TypeWarnings.h"

#include "cli/Suggestions.h"

#include <velk/ini/EDAApplicationIniGenerator.h>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

QStringList existingTypes(const EDAProvider &provider)
{
    QMap<QString, bool> types;
    const auto components = provider.getComponents();
    for (const auto &component : components)
        types.insert(component->type(), true);
    types.remove(QString());
    return types.keys();
}
}

QStringList typeWarnings(const EDAProvider &provider, const NetlistOptions &options,
                         const std::vector<std::string> &dutTypes)
{
    const NetlistOptions defaults;
    const QStringList existing = existingTypes(provider);
    QStringList warnings;
    const auto check = [&](const QString &option, const std::vector<std::string> &types,
                           const std::vector<std::string> &defaultTypes) {
        if (types == defaultTypes)
            return;
        for (const QString &type : toQStringList(types)) {
            if (!existing.contains(type, Qt::CaseInsensitive))
                warnings.append(u"%1 %2: no component has this CompType; there are %3"_s.arg(
                    option, type, enumeration(nearestFirst(type, existing))));
        }
    };
    check(u"--connector"_s, options.connectorTypes, defaults.connectorTypes);
    check(u"--switchable"_s, options.switchableTypes, defaults.switchableTypes);
    check(u"--interface"_s, options.interfaceTypes, defaults.interfaceTypes);
    check(u"--dut-type"_s, dutTypes, {EDAApplicationIniGenerator::DEFAULT_DUT_COMPONENT_TYPE.toStdString()});
    return warnings;
}
}
