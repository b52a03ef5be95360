#include <velk/model/PropertyIndex.h>

#include <QHash>

#include <algorithm>
#include <numeric>
#include <utility>

namespace Velk {

void PropertyIndex::add(const QSharedPointer<EDAComponent> &component)
{
    const int number = static_cast<int>(components.size());
    components.append(component);
    for (auto it = component->properties.cbegin(); it != component->properties.cend(); ++it)
        entries.push_back({hashOf(it.key(), it.value()), number});
}

// Sorts the entries into buckets by counting.
void PropertyIndex::finish()
{
    while (bucketMask < entries.size())
        bucketMask = bucketMask * 2 + 1;
    bucketStarts.assign(std::size_t(bucketMask) + 2, 0);
    for (const Entry &entry : entries)
        ++bucketStarts[bucketOf(entry.hash)];
    // The counts become ends, and each end the start while its bucket is filled from the back.
    std::partial_sum(bucketStarts.begin(), bucketStarts.end(), bucketStarts.begin());
    std::vector<Entry> sorted(entries.size());
    for (auto entry = entries.crbegin(); entry != entries.crend(); ++entry)
        sorted[--bucketStarts[bucketOf(entry->hash)]] = *entry;
    entries = std::move(sorted);
}

quint32 PropertyIndex::hashOf(const QString &key, const QString &value) const
{
    return static_cast<quint32>(qHashMulti(seed, key, value));
}

// None where no wanted property narrows the choice: an empty value also matches components without the property.
std::optional<std::size_t> PropertyIndex::smallestBucketFor(const QMap<QString, QString> &wanted) const
{
    std::optional<std::size_t> smallest;
    for (auto it = wanted.cbegin(); it != wanted.cend(); ++it) {
        if (it.value().isEmpty())
            continue;
        const std::size_t bucket = bucketOf(hashOf(it.key(), it.value()));
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
        const auto &component = components.at(entries[i].component);
        if (isWanted(component))
            return component;
    }
    return {};
}
}
