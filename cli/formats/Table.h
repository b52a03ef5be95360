#ifndef VELK_CLI_FORMATS_TABLE_H
#define VELK_CLI_FORMATS_TABLE_H

#include "cli/terminal/Colour.h"

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
}

#endif
