#include <velk/naming/PropertyHints.h>

#include <velk/naming/Suggestions.h>

#include <QRegularExpression>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace Velk {

namespace {

using Components = QList<QSharedPointer<EDAComponent>>;
using Properties = QMap<QString, QString>;

const QString capitalsCount = u" (capitals count)"_s;

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

/// Names the sheet that would give a component this property if a "-" stood behind it; empty if there is none.
QString missingHyphenHint(const Components &components, const QString &key, const QString &value)
{
    const QRegularExpression property(u"(?<!\\w)%1(?!\\w)"_s.arg(QRegularExpression::escape(key + u'=' + value)));
    for (const auto &component : components) {
        const QString sheet = component->property(u"Sheetname"_s);
        if (sheet.mid(sheet.lastIndexOf(u'-') + 1).contains(property))
            return u"; the sheet '%1' of %2 has no '-' behind it"_s.arg(sheet, component->ref);
    }
    return {};
}

/// Empty if some component has this property.
QString whyNoneHas(const Components &components, const QString &key, const QString &value)
{
    const auto matches = [&](const auto &component) { return component->property(key) == value; };
    if (std::any_of(components.cbegin(), components.cend(), matches))
        return {};
    const QString hint = missingHyphenHint(components, key, value);
    const QStringList values = valuesOf(components, key);
    if (values.isEmpty())
        return u"no component has a property '%1'; there are: %2"_s.arg(
                   key, enumeration(nearestFirst(key, keysOf(components)))) +
               hint;
    return u"no component has %1=%2; values of %1: %3"_s.arg(key, value, enumeration(nearestFirst(value, values))) +
           (values.contains(value, Qt::CaseInsensitive) ? capitalsCount : hint);
}

/// How many of the properties a component has, first those in whatever letters.
std::pair<qsizetype, qsizetype> matchCounts(const EDAComponent &component, const Properties &wanted)
{
    std::pair<qsizetype, qsizetype> counts;
    for (auto it = wanted.cbegin(); it != wanted.cend(); ++it) {
        const QString value = component.property(it.key());
        counts.first += value.compare(it.value(), Qt::CaseInsensitive) == 0 ? 1 : 0;
        counts.second += value == it.value() ? 1 : 0;
    }
    return counts;
}

QString nearestComponent(const Components &components, const Properties &wanted)
{
    const auto nearest = *std::max_element(components.cbegin(), components.cend(), [&](const auto &a, const auto &b) {
        return matchCounts(*a, wanted) < matchCounts(*b, wanted);
    });
    QStringList differences;
    for (auto it = wanted.cbegin(); it != wanted.cend(); ++it) {
        const QString value = nearest->property(it.key());
        if (value == it.value())
            continue;
        const bool isAlike = value.compare(it.value(), Qt::CaseInsensitive) == 0;
        differences.append(nearest->properties.contains(it.key())
                               ? u"%1=%2"_s.arg(it.key(), value) + (isAlike ? capitalsCount : QString())
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
    if (!reasons.isEmpty())
        return reasons.join(u"; "_s);
    return components.isEmpty() ? u"none exists"_s : nearestComponent(components, wanted);
}
}
