#include "cli/IniEntries.h"

#include <QList>

namespace VelkCli {

namespace {

/// Up to the first "=" that no backslash precedes. Where all do, the backslash is the key's own.
QByteArray keyOf(const QByteArray &line)
{
    qsizetype sign = line.indexOf('=');
    while (sign > 0 && line.at(sign - 1) == '\\')
        sign = line.indexOf('=', sign + 1);
    return line.left(sign < 0 ? line.indexOf('=') : sign);
}
}

void forEachIniEntry(const QByteArray &ini, const std::function<void(const IniEntry &)> &visit)
{
    IniEntry entry;
    const auto lines = ini.split('\n');
    for (const QByteArray &line : lines) {
        if (line.startsWith('['))
            entry = {line.trimmed(), {}, {}};
        else if (line.startsWith(';'))
            entry.comment = line.mid(2);
        else if (line.contains('=')) {
            entry.key = keyOf(line);
            visit(entry);
        }
    }
}
}
