#ifndef VELK_CLI_INIENTRIES_H
#define VELK_CLI_INIENTRIES_H

#include <QByteArray>
#include <QString>

#include <functional>

namespace VelkCli {

struct IniEntry
{
    QByteArray section; ///< with its brackets
    QByteArray comment; ///< the last one before it in the section, without its "; "; may be empty
    QByteArray key;
    QByteArray value;
};

/// The text as it is, with a byte-order mark at its start.
QString toText(const QByteArray &bytes);

/// Visits the entries of an INI text as Velk writes it, in order. The text may come in pieces.
class IniEntryReader
{
public:
    using Visit = std::function<void(const IniEntry &)>;

    explicit IniEntryReader(Visit visit);
    void read(QByteArrayView piece);

private:
    void readLine(const QByteArray &line);

    Visit visitEntry;
    IniEntry entry;
    QByteArray unfinishedLine;
};

/// The same for a text that is whole.
void forEachIniEntry(const QByteArray &ini, const IniEntryReader::Visit &visit);
}

#endif
