#include <velk/switching/RelayTable.h>

using namespace Qt::StringLiterals;

namespace Velk {

extern const char *const builtInRelays; ///< the text of relays.csv, which the build compiles in

namespace {

QRegularExpression patternOf(const QString &part)
{
    QString text = QRegularExpression::escape(part);
    text.replace(u"\\*"_s, u".*"_s);
    return QRegularExpression(QRegularExpression::anchoredPattern(text),
                              QRegularExpression::DotMatchesEverythingOption);
}
}

RelayTable::RelayTable(const CsvTable &table)
{
    const qsizetype part = table.requiredColumn(u"part"_s);
    const qsizetype positions = table.requiredColumn(u"positions"_s);
    for (const CsvTable::Row &row : table.rows()) {
        const QString pattern = row.cells.at(part).trimmed();
        m_entries.append({patternOf(pattern), pattern.contains(u':'), {row.cells.at(positions), table.place(row)}});
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
        if (entry.pattern.match(entry.namesLibrary ? fullName : name).hasMatch())
            return entry.row;
    }
    return {};
}
}
