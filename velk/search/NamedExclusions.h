#ifndef VELK_SEARCH_NAMEDEXCLUSIONS_H
#define VELK_SEARCH_NAMEDEXCLUSIONS_H

#include <velk/search/Exclusions.h>

#include <QList>
#include <QSet>
#include <QString>

#include <memory>
#include <mutex>

namespace Velk {

/// What searches are to keep out of, as it was told, and what that is in an index. Safe for threads.
class NamedExclusions
{
public:
    NamedExclusions(const QList<QString> &componentRefs, const QList<QString> &netNames);

    const QList<QString> &componentRefs() const { return refs; } ///< as given
    const QList<QString> &netNames() const { return names; }     ///< as given

    bool hasComponent(const QString &ref) const { return distinctRefs.contains(ref); }
    bool hasNet(const QString &name) const { return distinctNames.contains(name); }

    /// The same in numbers. Kept until another index asks, since it takes a look at each net.
    std::shared_ptr<const Exclusions> in(const NetlistIndex &index) const;

private:
    Exclusions numbered(const NetlistIndex &index) const;

    const QList<QString> refs;
    const QList<QString> names;
    const QSet<QString> distinctRefs;
    const QSet<QString> distinctNames;
    mutable std::mutex mutex;
    mutable std::shared_ptr<const Exclusions> latest;
    mutable quint64 serialOfLatest = 0; ///< of the index that it is for
};
}

#endif
