#ifndef VELK_CLI_FORMATS_PROPERTYCOLUMNS_H
#define VELK_CLI_FORMATS_PROPERTYCOLUMNS_H

#include <velk/model/EDAComponent.h>

#include <QHash>
#include <QList>
#include <QStringList>

namespace VelkCli {

/// A column for each property that one of these components has, by name.
class PropertyColumns
{
public:
    /// None of the components is null.
    explicit PropertyColumns(const QList<QSharedPointer<Velk::EDAComponent>> &components);

    const QStringList &heading() const { return keys; }
    /// The cells of one of these components.
    QStringList cellsOf(const Velk::EDAComponent &component) const;

private:
    QStringList keys;
    QHash<QString, qsizetype> columns;
};
}

#endif
