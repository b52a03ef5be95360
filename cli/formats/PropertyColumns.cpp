#include "cli/formats/PropertyColumns.h"

#include <set>

using namespace Velk;

namespace VelkCli {

PropertyColumns::PropertyColumns(const QList<QSharedPointer<EDAComponent>> &components)
{
    std::set<QString> sortedKeys;
    for (const auto &component : components) {
        for (auto property = component->properties.cbegin(); property != component->properties.cend(); ++property)
            sortedKeys.insert(property.key());
    }
    keys = {sortedKeys.cbegin(), sortedKeys.cend()};
    for (qsizetype column = 0; column < keys.size(); ++column)
        columns.insert(keys.at(column), column);
}

QStringList PropertyColumns::cellsOf(const EDAComponent &component) const
{
    QStringList cells;
    cells.resize(keys.size());
    for (auto property = component.properties.cbegin(); property != component.properties.cend(); ++property)
        cells[columns.value(property.key())] = property.value();
    return cells;
}
}
