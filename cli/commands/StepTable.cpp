#include "cli/commands/StepTable.h"

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

QList<TableStep> stepsOf(const CsvTable &table)
{
    const qsizetype column = table.column(u"step"_s);
    if (column < 0)
        return {{u"1"_s, table.rows(), 0}};
    QList<TableStep> steps;
    for (const CsvTable::Row &row : table.rows()) {
        const QString &name = row.cells.at(column);
        if (steps.isEmpty() || steps.last().name != name)
            steps.append(TableStep{name, {}, row.number});
        steps.last().rows.append(row);
    }
    return steps;
}
}
