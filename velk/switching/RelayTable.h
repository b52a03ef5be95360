#ifndef VELK_SWITCHING_RELAYTABLE_H
#define VELK_SWITCHING_RELAYTABLE_H

#include <velk/VelkExport.h>
#include <velk/switching/CsvTable.h>

#include <QList>
#include <QString>

#include <optional>

namespace Velk {

/// The positions of relays by their parts. A plain value.
class VELK_EXPORT RelayTable
{
public:
    /// What a row says of a part.
    struct Row
    {
        QString positions; ///< as readPositions() takes them, not read yet
        QString place;     ///< for messages: "relays.csv:3"
    };

    /// From a table with the columns "part" and "positions", any others being ignored. A part is LIBRARY:NAME or NAME,
    /// exactly as the netlist has it, where "*" stands for any characters. Throws an EDAException where a column is
    /// missing.
    explicit RelayTable(const CsvTable &table);
    ~RelayTable();
    RelayTable(const RelayTable &other);
    RelayTable &operator=(const RelayTable &other);
    RelayTable(RelayTable &&other) noexcept;
    RelayTable &operator=(RelayTable &&other) noexcept;

    /// That of the relays in KiCad's library "Relay".
    static const RelayTable &builtIn();

    /// As a table has it, "LIBRARY:NAME", or the name alone of a part without a library. \a part may have the library
    /// before it, as where a netlist has a part of that name from another one too.
    static QString partName(const QString &library, const QString &part);

    /// What the first row says that fits the part of this library and name; empty where none does.
    std::optional<Row> rowFor(const QString &library, const QString &part) const;

private:
    struct Entry
    {
        QString pattern;
        bool namesLibrary;
        Row row;
    };

    QList<Entry> m_entries;
};
}

#endif
