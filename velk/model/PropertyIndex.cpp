#include <velk/model/PropertyIndex.h>

#include <QHash>

#include <algorithm>
#include <numeric>
#include <utility>

namespace Velk {

PropertyIndex::PropertyIndex(const QList<QSharedPointer<EDAComponent>> &allComponents)
    : components(allComponents)
{
    std::size_t count = 0;
    for (const auto &component : std::as_const(components))
        count += static_cast<std::size_t>(component->properties.size());
    while (bucketMask < count)
        bucketMask = bucketMask * 2 + 1;

    std::vector<std::pair<std::size_t, int>> found; // bucket and component
    found.reserve(count);
    bucketStarts.assign(bucketMask + 2, 0);
    for (int number = 0; number < static_cast<int>(components.size()); ++number) {
        const auto &properties = components.at(number)->properties;
        for (auto it = properties.cbegin(); it != properties.cend(); ++it) {
            found.emplace_back(bucketOf(it.key(), it.value()), number);
            ++bucketStarts[found.back().first];
        }
    }
    // The counts become ends, and each end the start while its bucket is filled from the back.
    std::partial_sum(bucketStarts.begin(), bucketStarts.end(), bucketStarts.begin());
    entries.resize(count);
    for (auto it = found.crbegin(); it != found.crend(); ++it)
        entries[--bucketStarts[it->first]] = it->second;
}

std::size_t PropertyIndex::bucketOf(const QString &key, const QString &value) const
{
    return qHashMulti(0, key, value) & bucketMask;
}

// None where no wanted property narrows the choice: an empty value also matches components without the property.
std::optional<std::size_t> PropertyIndex::smallestBucketFor(const QMap<QString, QString> &wanted) const
{
    std::optional<std::size_t> smallest;
    for (auto it = wanted.cbegin(); it != wanted.cend(); ++it) {
        if (it.value().isEmpty())
            continue;
        const std::size_t bucket = bucketOf(it.key(), it.value());
        if (!smallest || sizeOf(bucket) < sizeOf(*smallest))
            smallest = bucket;
    }
    return smallest;
}

QSharedPointer<EDAComponent> PropertyIndex::firstWith(const QMap<QString, QString> &wanted) const
{
    const auto isWanted = [&wanted](const auto &component) { return component->matchesProperties(wanted); };
    const auto bucket = smallestBucketFor(wanted);
    if (!bucket) {
        const auto found = std::find_if(components.cbegin(), components.cend(), isWanted);
        return found == components.cend() ? nullptr : *found;
    }
    for (std::size_t i = bucketStarts[*bucket]; i < bucketStarts[*bucket + 1]; ++i) {
        const auto &component = components.at(entries[i]);
        if (isWanted(component))
            return component;
    }
    return {};
}
}
