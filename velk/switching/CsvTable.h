#ifndef VELK_SWITCHING_CSVTABLE_H
#define VELK_SWITCHING_CSVTABLE_H

#include <velk/VelkExport.h>

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

namespace Velk {

/// A table that people keep in a file: CSV with commas, quotes as in RFC 4180 and a head line, in UTF-8 with or without
/// a byte order mark. A plain value.
class VELK_EXPORT CsvTable
{
public:
    /// A row below the head line.
    struct Row
    {
        int line;          ///< on which it begins, counted from 1
        QStringList cells; ///< as many as the table has columns
        int number;        ///< counted from 0, with rows whose cells are all empty, which are left out
    };

    /// Reads \a text; \a name is what messages call it, as its file. Empty lines and rows of empty cells are left out,
    /// and cells that a row lacks at its end are empty. Throws an EDAException with name and line for a text without a
    /// head line, that is not UTF-8, whose quotes are not as they should be, or with a row that is longer than the head
    /// line.
    CsvTable(const QByteArray &text, const QString &name);
    ~CsvTable();
    CsvTable(const CsvTable &other);
    CsvTable &operator=(const CsvTable &other);
    CsvTable(CsvTable &&other) noexcept;
    CsvTable &operator=(CsvTable &&other) noexcept;

    QString name() const;           ///< as given
    QStringList columns() const;    ///< as the head line names them, without blanks around
    const QList<Row> &rows() const; ///< in the order of the text
    /// The position of the column of this name, the first one of several, or -1.
    qsizetype column(const QString &columnName) const;
    /// The same for a column that has to be there. Throws an EDAException that names those there are.
    qsizetype requiredColumn(const QString &columnName) const;
    /// "relays.csv:3", for messages about a row.
    QString place(const Row &row) const;

private:
    QString m_name;
    QStringList m_columns;
    QList<Row> m_rows;
};
}

#endif
