#include "cli/IniEntries.h"

#include <QStringDecoder>

#include <utility>

namespace VelkCli {

namespace {

/// The first "=" that no backslash precedes. Where all do, the backslash is the key's own. Negative if there is none.
qsizetype signIn(const QByteArray &line)
{
    const qsizetype first = line.indexOf('=');
    qsizetype sign = first;
    while (sign > 0 && line.at(sign - 1) == '\\')
        sign = line.indexOf('=', sign + 1);
    return sign < 0 ? first : sign;
}
}

QString toText(const QByteArray &bytes)
{
    QStringDecoder decode(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    return decode(bytes);
}

IniEntryReader::IniEntryReader(Visit visit)
    : visitEntry(std::move(visit))
{
}

void IniEntryReader::read(QByteArrayView piece)
{
    for (qsizetype end = piece.indexOf('\n'); end >= 0; end = piece.indexOf('\n')) {
        readLine(unfinishedLine.append(piece.first(end)));
        unfinishedLine.clear();
        piece = piece.sliced(end + 1);
    }
    unfinishedLine.append(piece);
}

void IniEntryReader::readLine(const QByteArray &line)
{
    if (line.startsWith('[')) {
        entry = {line.trimmed(), {}, {}, {}};
    } else if (line.startsWith(';')) {
        entry.comment = line.mid(2);
    } else if (const qsizetype sign = signIn(line); sign >= 0) {
        entry.key = line.first(sign);
        entry.value = line.sliced(sign + 1);
        visitEntry(entry);
    }
}

void forEachIniEntry(const QByteArray &ini, const IniEntryReader::Visit &visit)
{
    IniEntryReader(visit).read(ini);
}
}
