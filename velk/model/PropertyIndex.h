#ifndef VELK_MODEL_PROPERTYINDEX_H
#define VELK_MODEL_PROPERTYINDEX_H

#include <velk/model/EDAComponent.h>

#include <QList>
#include <QMap>
#include <QSharedPointer>
#include <QString>

#include <optional>
#include <vector>

namespace Velk {

/// Finds components by their properties: a hash table from key and value to components. It holds numbers only, so
/// that what it finds is verified.
class PropertyIndex
{
public:
    explicit PropertyIndex(const QList<QSharedPointer<EDAComponent>> &allComponents);

    /// The first component that has all these properties, or null.
    QSharedPointer<EDAComponent> firstWith(const QMap<QString, QString> &wanted) const;

private:
    std::size_t bucketOf(const QString &key, const QString &value) const;
    std::size_t sizeOf(std::size_t bucket) const { return bucketStarts[bucket + 1] - bucketStarts[bucket]; }
    std::optional<std::size_t> smallestBucketFor(const QMap<QString, QString> &wanted) const;

    QList<QSharedPointer<EDAComponent>> components;
    std::size_t bucketMask = 0;
    std::vector<std::size_t> bucketStarts; ///< in entries; one more than there are buckets
    std::vector<int> entries;              ///< numbers of components, ascending in each bucket
};
}

#endif
