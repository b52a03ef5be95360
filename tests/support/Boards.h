#ifndef VELK_TESTS_BOARDS_H
#define VELK_TESTS_BOARDS_H

#include "tests/support/NetlistText.h"
#include "tests/support/Process.h"

#include <QString>
#include <QStringList>

namespace BoardText {

using namespace Qt::StringLiterals;

inline QStringList words(const QString &text)
{
    return text.split(u' ', Qt::SkipEmptyParts);
}

/// "1=HI 2": components with the same pins have the same part.
inline QByteArray libpart(const QString &pins)
{
    QByteArray result;
    for (const QString &pin : words(pins))
        result += NetlistText::pin(pin.section(u'=', 0, 0).toUtf8(), pin.section(u'=', 1).toUtf8());
    return NetlistText::libpart(pins.toUtf8(), result);
}

/// "K1 [1 2] CompType=Relay, Group=A", with "~" for a blank in the properties.
inline QByteArray component(const QString &line)
{
    QByteArray properties;
    for (QString property : line.section(u"] "_s, 1).split(u", "_s, Qt::SkipEmptyParts)) {
        property.replace(u'~', u' ');
        properties += NetlistText::property(property.section(u'=', 0, 0).toUtf8(), property.section(u'=', 1).toUtf8());
    }
    return NetlistText::component(line.section(u' ', 0, 0).toUtf8(), line.section(u'[', 1).section(u']', 0, 0).toUtf8(),
                                  properties);
}

/// "A: K1/1 K2/1".
inline QByteArray net(const QString &line)
{
    return NetlistText::net(line.section(u": "_s, 0, 0).toUtf8(), words(line.section(u": "_s, 1)));
}

/// A line for each component and each net.
inline QByteArray netlist(const QString &board)
{
    QByteArray components, parts, nets;
    for (const QString &line : board.split(u'\n', Qt::SkipEmptyParts)) {
        if (!line.contains(u'[')) {
            nets += net(line);
            continue;
        }
        components += component(line);
        parts += libpart(line.section(u'[', 1).section(u']', 0, 0));
    }
    return NetlistText::netlist(components, parts, nets);
}
}

/// Writes boards, which "--" separates, as 1.net, 2.net, ... into the folder, and returns the names. A line is a
/// component or a net; a board that begins with a parenthesis is a netlist as it stands.
inline QStringList writeBoards(const QString &boards, const QString &folder)
{
    QStringList names;
    for (const QString &board : boards.split(QStringLiteral("\n--\n"))) {
        names.append(QStringLiteral("%1/%2.net").arg(folder).arg(names.size() + 1));
        write(names.last(), board.startsWith(u'(') ? board : QString::fromUtf8(BoardText::netlist(board)));
    }
    return names;
}

#endif
