#ifndef VELK_INI_CHANNELTABLES_H
#define VELK_INI_CHANNELTABLES_H

#include <velk/model/EDAProvider.h>

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

#include <utility>

namespace Velk {

/// What stands in a channel table of one component or of one group of sources, below a comment that names it.
struct ChannelRows
{
    QString type;
    QString name; ///< the reference, or that of the group
    bool isGroup;
    QList<std::pair<QString, QString>> entries; ///< key and value, in order

    QString comment() const;
    /// An entry for each pin, the pin's name behind both prefixes. A null \a part has none.
    void addPins(const QSharedPointer<EDAPart> &part, const QString &keyPrefix, const QString &valuePrefix);
};

using ChannelTable = QList<ChannelRows>;

/// The channel tables of an application INI, which has one for each bench: its DUTs, then all sources.
class ChannelTables
{
public:
    /// The netlists have to stay. Types are compared without regard to case.
    ChannelTables(const EDAProvider &testSystem, const EDAProvider &application, const QStringList &dutTypes,
                  const QStringList &sourceTypes);

    int benchCount() const;
    /// The numbers of those benches that have a DUT, ascending.
    QList<int> benchesWithDuts() const;
    ChannelTable ofDuts(int bench) const;
    /// The sources one by one, then by group.
    ChannelTable ofSources() const;

private:
    using Components = QList<QSharedPointer<EDAComponent>>;

    const EDAProvider &testSystemProvider;
    const EDAProvider &applicationProvider;
    QMap<int, Components> dutsByBench; ///< from 1 on
    Components sources;
};
}

#endif
