#ifndef VELK_INDEX_PROPERTYINDEX_H
#define VELK_INDEX_PROPERTYINDEX_H

#include <velk/model/EDAComponent.h>

#include <QHashFunctions>
#include <QList>
#include <QMap>
#include <QSharedPointer>
#include <QString>
#include <QVarLengthArray>

#include <functional>
#include <vector>

namespace Velk {

/// Finds components by their properties: a hash table from key and value to components. It holds numbers only, so
/// that what it finds is verified.
class PropertyIndex
{
public:
    explicit PropertyIndex(const QList<QSharedPointer<EDAComponent>> &allComponents);

    /// Adds a property of the next component, the first one at first.
    void add(const QString &key, const QString &value);
    /// The component has no more properties.
    void finishComponent() { ++nextComponent; }
    /// Makes the table when all components have been added.
    void finish();

    /// The first component that has all these properties and is accepted, or null.
    QSharedPointer<EDAComponent> firstWith(const QMap<QString, QString> &wanted,
                                           const std::function<bool(const EDAComponent &)> &isAccepted) const;

private:
    struct Entry
    {
        quint32 hash; ///< of key and value
        int component;
    };

    /// Components that probably have one wanted property, among others.
    struct Bucket
    {
        quint32 hash;
        const Entry *begin;
        const Entry *end;

        bool operator<(const Bucket &other) const { return end - begin < other.end - other.begin; }
        bool contains(int component) const;
    };

    quint32 hashOf(const QString &key, const QString &value) const;
    std::size_t bucketNumber(quint32 hash) const { return hash & bucketMask; }
    QVarLengthArray<Bucket> bucketsFor(const QMap<QString, QString> &wanted) const;

    QList<QSharedPointer<EDAComponent>> components;
    int nextComponent = 0;
    const std::size_t seed = QHashSeed::globalSeed(); ///< as it was when the table was made
    quint32 bucketMask = 0;
    std::vector<quint32> bucketStarts; ///< in entries; one more than there are buckets
    std::vector<Entry> entries;        ///< ascending by component in each bucket
};
}

#endif
