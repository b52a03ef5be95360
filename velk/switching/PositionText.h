#ifndef VELK_SWITCHING_POSITIONTEXT_H
#define VELK_SWITCHING_POSITIONTEXT_H

#include <velk/VelkExport.h>
#include <velk/model/RelayContacts.h>

#include <QList>
#include <QSet>
#include <QString>

namespace Velk {

/// What a text of positions says, or where it is wrong.
struct PositionText
{
    QList<ContactPosition> positions; ///< at least two; none where the text is wrong
    QString problem = {};             ///< what is wrong, as "expected PIN-PIN, not '12'"; empty where nothing is
    qsizetype column = 0;             ///< of the character where that begins, counted from 1
};

/// The positions that a field `Positions` or a row of a table of relays lists for a part with these pin numbers.
///
/// Positions are separated by "/", the first one is rest. Each lists pairs PIN-PIN, any number of them, separated by
/// blanks or commas, and may have a name, which stands before a colon: "/ 1-2" is a contact that closes, "1-2 /" one
/// that opens, "11-12 21-22 / 11-14 21-24" a double changeover, "/ CH1: C-1 / CH2: C-2" a multiplexer. There have to be
/// two positions at least, and the two pins of a pair have to be different ones that the part has.
VELK_EXPORT PositionText readPositions(const QString &text, const QSet<QString> &pinNumbers);

/// The text that readPositions() reads as \a positions, with blanks between pairs: "11-12 21-22 / 11-14 21-24".
/// Positions that follow from the pins may have numbers that no such text can hold, as "A-1".
VELK_EXPORT QString positionsText(const QList<ContactPosition> &positions);
}

#endif
