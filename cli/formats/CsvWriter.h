#ifndef VELK_CLI_FORMATS_CSVWRITER_H
#define VELK_CLI_FORMATS_CSVWRITER_H

#include <QStringList>

class QIODevice;

namespace VelkCli {

/// Whom a CSV file is for.
enum class CsvReader
{
    Program,    ///< which gets every cell as it is
    Spreadsheet ///< which would compute a cell that looks like a formula
};

/// RFC 4180, in UTF-8 with a line feed after each row: a cell with a comma, a quote or a line break is quoted. For a
/// spreadsheet an apostrophe stands before each sign that may begin a formula: "=", "+", "-" or "@", wide ones too, at
/// the start of a cell and behind what some take for the end of one: a semicolon, a tab or a line break.
class CsvWriter
{
public:
    /// The device has to stay.
    CsvWriter(QIODevice &device, CsvReader reader);
    void write(const QStringList &cells);

private:
    QIODevice &output;
    const CsvReader csvReader;
};
}

#endif
