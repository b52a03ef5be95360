#include "cli/PropertyHints.h"

#include "cli/Suggestions.h"

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

using Components = QList<QSharedPointer<EDAComponent>>;
using Properties = QMap<QString, QString>;

QStringList keysOf(const Components &components)
{
    QMap<QString, bool> keys;
    for (const auto &component : components) {
        for (auto it = component->properties.cbegin(); it != component->properties.cend(); ++it)
            keys.insert(it.key(), true);
    }
    return keys.keys();
}

QStringList valuesOf(const Components &components, const QString &key)
{
    QMap<QString, bool> values;
    for (const auto &component : components) {
        if (component->properties.contains(key))
            values.insert(component->property(key), true);
    }
    return values.keys();
}

/// Empty if some component has this property.
QString whyNoneHas(const Components &components, const QString &key, const QString &value)
{
    const auto matches = [&](const auto &component) { return component->property(key) == value; };
    if (std::any_of(components.cbegin(), components.cend(), matches))
        return {};
    const QStringList values = valuesOf(components, key);
    if (values.isEmpty())
        return u"no component has a property '%1'; there are: %2"_s.arg(
            key, enumeration(nearestFirst(key, keysOf(components))));
    const QString hint = values.contains(value, Qt::CaseInsensitive) ? u" (capitals count)"_s : QString();
    return u"no component has %1=%2; values of %1: %3"_s.arg(key, value, enumeration(nearestFirst(value, values))) +
           hint;
}

QString nearestComponent(const Components &components, const Properties &wanted)
{
    const auto matchCount = [&wanted](const EDAComponent &component) {
        return std::count_if(wanted.keyValueBegin(), wanted.keyValueEnd(),
                             [&](const auto &entry) { return component.property(entry.first) == entry.second; });
    };
    const auto hasLess = [&](const auto &a, const auto &b) { return matchCount(*a) < matchCount(*b); };
    const auto nearest = *std::max_element(components.cbegin(), components.cend(), hasLess);
    QStringList differences;
    for (auto it = wanted.cbegin(); it != wanted.cend(); ++it) {
        if (nearest->property(it.key()) != it.value())
            differences.append(nearest->properties.contains(it.key())
                                   ? u"%1=%2"_s.arg(it.key(), nearest->property(it.key()))
                                   : u"no "_s + it.key());
    }
    return u"each of them occurs, but not together; %1 comes nearest, but has %2"_s.arg(nearest->ref,
                                                                                        enumeration(differences));
}
}

QString whyNoneMatches(const Components &components, const Properties &wanted)
{
    QStringList reasons;
    for (auto it = wanted.cbegin(); it != wanted.cend(); ++it) {
        const QString reason = whyNoneHas(components, it.key(), it.value());
        if (!reason.isEmpty())
            reasons.append(reason);
    }
    return reasons.isEmpty() ? nearestComponent(components, wanted) : reasons.join(u"; "_s);
}
}
