#ifndef VELK_TESTS_BOARDS_H
#define VELK_TESTS_BOARDS_H

#include "tests/support/Process.h"

#include <QString>
#include <QStringList>

namespace BoardText {

using namespace Qt::StringLiterals;

inline QStringList words(const QString &text)
{
    return text.split(u' ', Qt::SkipEmptyParts);
}

inline QString element(const QString &name, const QString &value)
{
    return u"(%1 \"%2\")"_s.arg(name, value);
}

/// "1=HI 2": components with the same pins have the same part.
inline QString libpart(const QString &pins)
{
    QString result;
    for (const QString &pin : words(pins))
        result += u"(pin %1 %2 (type \"\"))"_s.arg(element(u"num"_s, pin.section(u'=', 0, 0)),
                                                   element(u"name"_s, pin.section(u'=', 1)));
    return u"(libpart %1 (pins %2))"_s.arg(element(u"part"_s, pins), result);
}

/// "K1 [1 2] CompType=Relay, Group=A", with "~" for a blank in the properties.
inline QString component(const QString &line)
{
    QString result = element(u"ref"_s, line.section(u' ', 0, 0)) + element(u"value"_s, {}) +
                     u"(libsource %1)"_s.arg(element(u"part"_s, line.section(u'[', 1).section(u']', 0, 0)));
    for (QString property : line.section(u"] "_s, 1).split(u", "_s, Qt::SkipEmptyParts)) {
        property.replace(u'~', u' ');
        result += u"(property %1 %2)"_s.arg(element(u"name"_s, property.section(u'=', 0, 0)),
                                            element(u"value"_s, property.section(u'=', 1)));
    }
    return u"(comp %1)"_s.arg(result);
}

/// "A: K1/1 K2/1".
inline QString net(const QString &line)
{
    QString result = element(u"name"_s, line.section(u": "_s, 0, 0));
    for (const QString &node : words(line.section(u": "_s, 1)))
        result += u"(node %1 %2)"_s.arg(element(u"ref"_s, node.section(u'/', 0, 0)),
                                        element(u"pin"_s, node.section(u'/', 1)));
    return u"(net %1)"_s.arg(result);
}

/// A line for each component and each net.
inline QString netlist(const QString &board)
{
    QString components;
    QString parts;
    QString nets;
    for (const QString &line : board.split(u'\n', Qt::SkipEmptyParts)) {
        if (!line.contains(u'[')) {
            nets += net(line);
            continue;
        }
        components += component(line);
        parts += libpart(line.section(u'[', 1).section(u']', 0, 0));
    }
    return u"(export (components %1) (libparts %2) (nets %3))"_s.arg(components, parts, nets);
}
}

/// Writes boards, which "--" separates, as 1.net, 2.net, ... into the folder, and returns the names. A line is a
/// component or a net; a board that begins with a parenthesis is a netlist as it stands.
inline QStringList writeBoards(const QString &boards, const QString &folder)
{
    QStringList names;
    for (const QString &board : boards.split(QStringLiteral("\n--\n"))) {
        names.append(QStringLiteral("%1/%2.net").arg(folder).arg(names.size() + 1));
        write(names.last(), board.startsWith(u'(') ? board : BoardText::netlist(board));
    }
    return names;
}

#endif
