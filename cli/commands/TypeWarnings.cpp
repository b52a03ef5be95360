#include "cli/commands/TypeWarnings.h"

#include "cli/commands/RelayOptions.h"

#include <velk/ini/EDAApplicationIniGenerator.h>
#include <velk/naming/Suggestions.h>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

QMap<QString, int> countsByType(const EDAProvider &provider)
{
    QMap<QString, int> counts;
    const auto components = provider.getComponents();
    for (const auto &component : components)
        ++counts[component->type()];
    return counts;
}

/// An unset variable, mostly. To the search it is the type of what has none.
QString emptyTypeWarning(const QString &option, int withoutType)
{
    return u"%1 '': means the components without CompType, of which there are %2"_s.arg(option,
                                                                                        QString::number(withoutType));
}
}

QStringList typeWarnings(const EDAProvider &provider, const NetlistOptions &options,
                         const std::vector<std::string> &dutTypes, const std::vector<std::string> &passiveTypes)
{
    const NetlistOptions defaults;
    auto counts = countsByType(provider);
    const int withoutType = counts.take(QString());
    const QStringList existing = counts.keys();
    QStringList warnings;
    const auto check = [&](const QString &option, const std::vector<std::string> &types,
                           const std::vector<std::string> &defaultTypes) {
        if (types == defaultTypes)
            return;
        const QString place = options.system.placeOf(option);
        for (const QString &type : toQStringList(types)) {
            if (type.isEmpty())
                warnings.append(emptyTypeWarning(place, withoutType));
            else if (!existing.contains(type, Qt::CaseInsensitive))
                warnings.append(u"%1 %2: no component has this CompType; there are %3"_s.arg(
                    place, type, enumeration(nearestFirst(type, existing))));
        }
    };
    check(u"--connector"_s, options.connectorTypes, defaults.connectorTypes);
    check(u"--switchable"_s, options.switchableTypes, defaults.switchableTypes);
    check(u"--interface"_s, options.interfaceTypes, defaults.interfaceTypes);
    check(u"--dut-type"_s, dutTypes, {EDAApplicationIniGenerator::DEFAULT_DUT_COMPONENT_TYPE.toStdString()});
    check(u"--passive"_s, passiveTypes, RelayOptions().passiveTypes);
    return warnings;
}
}
