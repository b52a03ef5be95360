#include <velk/index/PropertyIndex.h>

#include <velk/model/TextNumbers.h>

#include <algorithm>
#include <numeric>
#include <utility>

namespace Velk {

PropertyIndex::PropertyIndex(const QList<QSharedPointer<EDAComponent>> &allComponents)
    : components(allComponents)
{
}

void PropertyIndex::add(const QString &key, const QString &value)
{
    entries.push_back({hashOf(key, value), nextComponent});
}

// Sorts the entries into buckets by counting.
void PropertyIndex::finish()
{
    while (bucketMask < entries.size())
        bucketMask = bucketMask * 2 + 1;
    bucketStarts.assign(std::size_t(bucketMask) + 2, 0);
    for (const Entry &entry : entries)
        ++bucketStarts[bucketNumber(entry.hash)];
    // The counts become ends, and each end the start while its bucket is filled from the back.
    std::partial_sum(bucketStarts.begin(), bucketStarts.end(), bucketStarts.begin());
    std::vector<Entry> sorted(entries.size());
    for (auto entry = entries.crbegin(); entry != entries.crend(); ++entry)
        sorted[--bucketStarts[bucketNumber(entry->hash)]] = *entry;
    entries = std::move(sorted);
}

quint32 PropertyIndex::hashOf(const QString &key, const QString &value) const
{
    return static_cast<quint32>(textHash(value, textHash(key, seed)));
}

// The smallest first. None for an empty value: it also matches components without the property.
QVarLengthArray<PropertyIndex::Bucket> PropertyIndex::bucketsFor(const QMap<QString, QString> &wanted) const
{
    QVarLengthArray<Bucket> buckets;
    for (auto it = wanted.cbegin(); it != wanted.cend(); ++it) {
        if (it.value().isEmpty())
            continue;
        const quint32 hash = hashOf(it.key(), it.value());
        const std::size_t number = bucketNumber(hash);
        buckets.append({hash, entries.data() + bucketStarts[number], entries.data() + bucketStarts[number + 1]});
    }
    if (!buckets.isEmpty())
        std::swap(buckets.first(), *std::min_element(buckets.begin(), buckets.end()));
    return buckets;
}

bool PropertyIndex::Bucket::contains(int component) const
{
    const auto comesBefore = [](const Entry &entry, int number) { return entry.component < number; };
    const auto *const found = std::lower_bound(begin, end, component, comesBefore);
    return found != end && found->component == component;
}

QSharedPointer<EDAComponent> PropertyIndex::firstWith(const QMap<QString, QString> &wanted,
                                                      const std::function<bool(const EDAComponent &)> &isAccepted) const
{
    const auto isFound = [&](const auto &component) {
        return component->matchesProperties(wanted) && isAccepted(*component);
    };
    const auto buckets = bucketsFor(wanted);
    if (buckets.isEmpty()) {
        const auto found = std::find_if(components.cbegin(), components.cend(), isFound);
        return found == components.cend() ? nullptr : *found;
    }
    const Bucket &fewest = buckets.first();
    for (const auto *entry = fewest.begin; entry != fewest.end; ++entry) {
        const auto hasEntry = [entry](const Bucket &bucket) { return bucket.contains(entry->component); };
        if (entry->hash == fewest.hash && std::all_of(buckets.begin() + 1, buckets.end(), hasEntry) &&
            isFound(components.at(entry->component)))
            return components.at(entry->component);
    }
    return {};
}
}
