#ifndef VELK_CLI_TABLE_H
#define VELK_CLI_TABLE_H

#include "cli/Colour.h"

#include <QByteArray>
#include <QList>
#include <QStringList>

namespace VelkCli {

/// Rows under a heading, every row with as many cells as the heading.
struct Table
{
    QStringList heading;
    QList<QStringList> rows;
};

/// Columns padded with blanks, for eyes; not for cells of more than 100 characters. The first column holds references
/// or other names.
QByteArray toText(const Table &table, const Colour &colour = Colour());

/// RFC 4180, in UTF-8 with a line feed after each row: a cell with a comma, a quote or a line break is
/// quoted.
QByteArray toCsv(const Table &table);
}

#endif
