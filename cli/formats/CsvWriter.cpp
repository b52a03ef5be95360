#include "cli/formats/CsvWriter.h"

#include <QIODevice>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace VelkCli {

namespace {

QString withoutFormulas(const QString &cell)
{
    QString result;
    bool isAtStart = true; // but for blanks and what does not show
    for (const QChar c : cell) {
        if (isAtStart && u"=+-@\uff1d\uff0b\uff0d\uff20"_s.contains(c))
            result += u'\'';
        result += c;
        isAtStart = u";\t\r\n"_s.contains(c) || (isAtStart && (c.isSpace() || !c.isPrint()));
    }
    return result;
}

QString quotedCell(const QString &cell)
{
    const bool needsQuotes = std::any_of(cell.cbegin(), cell.cend(), [](QChar c) { return u"\",\r\n"_s.contains(c); });
    if (!needsQuotes)
        return cell;
    return u"\"%1\""_s.arg(QString(cell).replace(u'"', u"\"\""_s));
}
}

CsvWriter::CsvWriter(QIODevice &device, CsvReader reader)
    : output(device)
    , csvReader(reader)
{
}

void CsvWriter::write(const QStringList &cells)
{
    QString line;
    for (const QString &cell : cells)
        line += quotedCell(csvReader == CsvReader::Spreadsheet ? withoutFormulas(cell) : cell) + u',';
    line.back() = u'\n';
    output.write(line.toUtf8());
}
}
