#ifndef VELK_CLI_COMMANDS_STEPTABLE_H
#define VELK_CLI_COMMANDS_STEPTABLE_H

#include <velk/switching/CsvTable.h>

namespace VelkCli {

/// Rows of a table that belong together.
struct TableStep
{
    QString name;
    QList<Velk::CsvTable::Row> rows;
    int firstRow; ///< the number of its first row in the table
};

/// The rows by the column "step": those of one name in a row are a step. Without that column all rows are the step "1".
QList<TableStep> stepsOf(const Velk::CsvTable &table);
}

#endif
