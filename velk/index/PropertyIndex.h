#ifndef VELK_INDEX_PROPERTYINDEX_H
#define VELK_INDEX_PROPERTYINDEX_H

#include <velk/model/EDAComponent.h>
#include <velk/model/TextNumbers.h>

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
    /// The properties of this component are to be added next; those that it had before do not count. Numbers grow one
    /// by one.
    void beginComponent(int number);
    void add(const QString &key, const QString &value);
    /// Makes the table when all have been added, for the components in this order, each with its number.
    void finish(const QList<QSharedPointer<EDAComponent>> &inOrder, const std::vector<int> &numbers);

    /// The first component that has all these properties and is accepted, or null.
    QSharedPointer<EDAComponent> firstWith(const QMap<QString, QString> &wanted,
                                           const std::function<bool(const EDAComponent &)> &isAccepted) const;

private:
    struct Entry
    {
        quint32 hash;  ///< of key and value
        int component; ///< as it comes in order
    };

    /// Those of a component among the hashes.
    struct Properties
    {
        std::size_t first;
        std::size_t end;
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

    static std::size_t toSize(int number) { return static_cast<std::size_t>(number); }
    quint32 hashOf(const QString &key, const QString &value) const
    {
        return static_cast<quint32>(textHash(value, textHash(key, seed)));
    }
    std::size_t bucketNumber(quint32 hash) const { return hash & bucketMask; }
    QVarLengthArray<Bucket> bucketsFor(const QMap<QString, QString> &wanted) const;

    std::vector<Properties> propertiesByNumber; ///< until the table is made, as is what follows
    std::vector<quint32> hashes;
    std::size_t addedNumber = 0;

    QList<QSharedPointer<EDAComponent>> components;
    const std::size_t seed = QHashSeed::globalSeed(); ///< as it was when the table was made
    quint32 bucketMask = 0;
    std::vector<quint32> bucketStarts; ///< in entries; one more than there are buckets
    std::vector<Entry> entries;        ///< ascending by component in each bucket
};
}

#endif
