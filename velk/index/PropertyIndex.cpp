#include <velk/index/PropertyIndex.h>

#include <algorithm>
#include <numeric>
#include <utility>

namespace Velk {

void PropertyIndex::beginComponent(int number)
{
    addedNumber = toSize(number);
    propertiesByNumber.resize(std::max(propertiesByNumber.size(), addedNumber + 1));
    propertiesByNumber[addedNumber] = {hashes.size(), hashes.size()};
}

void PropertyIndex::add(const QString &key, const QString &value)
{
    hashes.push_back(hashOf(key, value));
    propertiesByNumber[addedNumber].end = hashes.size();
}

// Sorts the hashes into buckets by counting. A few share a bucket, so that the processor has the buckets at hand.
void PropertyIndex::finish(const QList<QSharedPointer<EDAComponent>> &inOrder, const std::vector<int> &numbers)
{
    components = inOrder;
    while (bucketMask < hashes.size() / 4)
        bucketMask = bucketMask * 2 + 1;
    bucketStarts.assign(std::size_t(bucketMask) + 2, 0);
    for (const int number : numbers) {
        const Properties &properties = propertiesByNumber[toSize(number)];
        for (std::size_t i = properties.first; i < properties.end; ++i)
            ++bucketStarts[bucketNumber(hashes[i])];
    }
    // The counts become ends, and each end the start while its bucket is filled from the back.
    std::partial_sum(bucketStarts.begin(), bucketStarts.end(), bucketStarts.begin());
    entries.resize(bucketStarts.back());
    for (std::size_t place = numbers.size(); place-- > 0;) {
        const Properties &properties = propertiesByNumber[toSize(numbers[place])];
        for (std::size_t i = properties.first; i < properties.end; ++i)
            entries[--bucketStarts[bucketNumber(hashes[i])]] = {hashes[i], static_cast<int>(place)};
    }
    propertiesByNumber = {};
    hashes = {};
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
    const auto *entry = std::lower_bound(begin, end, component, comesBefore);
    while (entry != end && entry->component == component && entry->hash != hash)
        ++entry;
    return entry != end && entry->component == component;
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
