#include <velk/switching/CsvTable.h>

#include <velk/model/EDAException.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace Velk {

namespace {

[[noreturn]] void refuseLine(const QString &name, int line, const QString &problem)
{
    throw EDAException(u"%1:%2: %3"_s.arg(name, QString::number(line), problem));
}

/// Takes the text apart, character by character.
class CsvReader
{
public:
    CsvReader(const QString &wholeText, const QString &tableName)
        : text(wholeText)
        , name(tableName)
    {
    }

    /// Those that hold anything.
    QList<CsvTable::Row> rows()
    {
        QList<CsvTable::Row> result;
        int number = 0;
        while (next < text.size()) {
            CsvTable::Row row = nextRow();
            if (row.cells == QStringList{QString()}) // an empty line
                continue;
            row.number = number++;
            if (std::any_of(row.cells.cbegin(), row.cells.cend(), [](const QString &cell) { return !cell.isEmpty(); }))
                result.append(row);
        }
        return result;
    }

private:
    CsvTable::Row nextRow()
    {
        CsvTable::Row row{line, {}, 0};
        do
            row.cells.append(takes(u'"') ? quotedCell() : plainCell());
        while (takes(u','));
        if (next < text.size() && !takesLineEnd())
            refuseLine(name, line, u"expected a comma after a cell in quotes; a quote in a cell is written twice"_s);
        return row;
    }

    QString plainCell()
    {
        const qsizetype begin = next;
        while (next < text.size() && text.at(next) != u',' && text.at(next) != u'\n' && text.at(next) != u'\r')
            ++next;
        QString cell = text.mid(begin, next - begin);
        if (cell.contains(u'"'))
            refuseLine(name, line,
                       u"a quote amid a cell; such a cell is put into quotes, and the quote written twice"_s);
        return cell;
    }

    QString quotedCell()
    {
        const int firstLine = line;
        QString cell;
        while (next < text.size()) {
            const QChar character = text.at(next++);
            if (character == u'"' && !takes(u'"'))
                return cell;
            if (character == u'\n')
                ++line;
            cell += character;
        }
        refuseLine(name, firstLine, u"a quote that does not end"_s);
    }

    bool takesLineEnd()
    {
        const bool isReturn = takes(u'\r');
        const bool isEnd = takes(u'\n') || isReturn;
        if (isEnd)
            ++line;
        return isEnd;
    }

    bool takes(QChar character)
    {
        if (next >= text.size() || text.at(next) != character)
            return false;
        ++next;
        return true;
    }

    const QString &text;
    const QString &name;
    qsizetype next = 0;
    int line = 1;
};

QString decoded(QByteArrayView bytes, const QString &name)
{
    constexpr char mark[] = "\xEF\xBB\xBF";
    if (bytes.startsWith(mark))
        bytes = bytes.sliced(3);
    if (!bytes.isValidUtf8())
        throw EDAException(u"%1: the table is not UTF-8"_s.arg(name));
    return QString::fromUtf8(bytes);
}
}

CsvTable::CsvTable(const QByteArray &text, const QString &name)
    : m_name(name)
    , m_rows(CsvReader(decoded(text, name), name).rows())
{
    if (m_rows.isEmpty())
        throw EDAException(u"%1: the table is empty; its first line names the columns"_s.arg(name));
    const Row head = m_rows.takeFirst();
    for (const QString &cell : head.cells)
        m_columns.append(cell.trimmed());
    for (Row &row : m_rows) {
        if (row.cells.size() > m_columns.size())
            refuseLine(name, row.line,
                       u"%1 cells below %2 columns; a cell with a comma is put into quotes"_s.arg(
                           QString::number(row.cells.size()), QString::number(m_columns.size())));
        row.cells.resize(m_columns.size());
        row.number -= head.number + 1;
    }
}

CsvTable::~CsvTable() = default;
CsvTable::CsvTable(const CsvTable &other) = default;
CsvTable &CsvTable::operator=(const CsvTable &other) = default;
CsvTable::CsvTable(CsvTable &&other) noexcept = default;
CsvTable &CsvTable::operator=(CsvTable &&other) noexcept = default;

QString CsvTable::name() const
{
    return m_name;
}

QStringList CsvTable::columns() const
{
    return m_columns;
}

const QList<CsvTable::Row> &CsvTable::rows() const
{
    return m_rows;
}

qsizetype CsvTable::column(const QString &columnName) const
{
    return m_columns.indexOf(columnName);
}

qsizetype CsvTable::requiredColumn(const QString &columnName) const
{
    const qsizetype found = column(columnName);
    if (found < 0)
        throw EDAException(
            u"%1: there is no column '%2', but '%3'"_s.arg(m_name, columnName, m_columns.join(u"', '"_s)));
    return found;
}

QString CsvTable::place(const Row &row) const
{
    return u"%1:%2"_s.arg(m_name, QString::number(row.line));
}
}
