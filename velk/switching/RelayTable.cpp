#include <velk/switching/RelayTable.h>

using namespace Qt::StringLiterals;

namespace Velk {

extern const char *const builtInRelays; ///< the text of relays.csv, which the build compiles in

namespace {

/// "*" in the pattern stands for any characters.
bool fits(QStringView name, QStringView pattern)
{
    const QList<QStringView> pieces = pattern.split(u'*');
    if (pieces.size() == 1)
        return name == pattern;
    if (!name.startsWith(pieces.first()))
        return false;
    qsizetype end = pieces.first().size();
    for (qsizetype i = 1; i < pieces.size() - 1; ++i) {
        const qsizetype begin = name.indexOf(pieces.at(i), end);
        if (begin < 0)
            return false;
        end = begin + pieces.at(i).size();
    }
    return name.sliced(end).endsWith(pieces.last());
}
}

RelayTable::RelayTable(const CsvTable &table)
{
    const qsizetype part = table.requiredColumn(u"part"_s);
    const qsizetype positions = table.requiredColumn(u"positions"_s);
    for (const CsvTable::Row &row : table.rows()) {
        const QString pattern = row.cells.at(part).trimmed();
        m_entries.append({pattern, pattern.contains(u':'), {row.cells.at(positions), table.place(row)}});
    }
}

RelayTable::~RelayTable() = default;
RelayTable::RelayTable(const RelayTable &other) = default;
RelayTable &RelayTable::operator=(const RelayTable &other) = default;
RelayTable::RelayTable(RelayTable &&other) noexcept = default;
RelayTable &RelayTable::operator=(RelayTable &&other) noexcept = default;

const RelayTable &RelayTable::builtIn()
{
    static const RelayTable table(CsvTable(builtInRelays, u"table of KiCad's relays"_s));
    return table;
}

QString RelayTable::partName(const QString &library, const QString &part)
{
    const QString prefix = library.isEmpty() ? QString() : library + u':';
    return part.startsWith(prefix) ? part : prefix + part;
}

std::optional<RelayTable::Row> RelayTable::rowFor(const QString &library, const QString &part) const
{
    const QString fullName = partName(library, part);
    const QString name = fullName.mid(library.isEmpty() ? 0 : library.size() + 1);
    for (const Entry &entry : m_entries) {
        if (fits(entry.namesLibrary ? fullName : name, entry.pattern))
            return entry.row;
    }
    return {};
}
}
