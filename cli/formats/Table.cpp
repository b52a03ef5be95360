#include "cli/formats/Table.h"

#include "cli/terminal/Terminal.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace VelkCli {

namespace {

// Longer cells stand out: one name of a megabyte must not make every row a megabyte long.
constexpr qsizetype widestColumn = 100;

QList<qsizetype> columnWidths(const Table &table)
{
    QList<qsizetype> widths(table.heading.size(), 0);
    const auto widen = [&](const QStringList &cells) {
        for (qsizetype i = 0; i < cells.size(); ++i)
            widths[i] = std::min(std::max(widths[i], cells.at(i).size()), widestColumn);
    };
    widen(table.heading);
    std::for_each(table.rows.cbegin(), table.rows.cend(), widen);
    return widths;
}
}

QByteArray toText(const Table &table, const Colour &colour)
{
    const auto widths = columnWidths(table);
    const auto line = [&](const QStringList &cells) {
        QString text;
        for (qsizetype i = 0; i < cells.size() - 1; ++i)
            text += cells.at(i).leftJustified(widths.at(i)) + u"  "_s;
        text += cells.last();
        while (text.endsWith(u' '))
            text.chop(1);
        return text;
    };
    QString text = colour.paint(Colour::Role::Heading, line(table.heading)) + u'\n';
    for (const auto &row : table.rows) {
        const QString rowText = line(row);
        const auto nameSize = row.first().size();
        text +=
            colour.paint(Colour::Role::Reference, rowText.left(nameSize)) + printable(rowText.mid(nameSize)) + u'\n';
    }
    return text.toUtf8();
}
}
