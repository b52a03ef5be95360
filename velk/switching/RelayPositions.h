#ifndef VELK_SWITCHING_RELAYPOSITIONS_H
#define VELK_SWITCHING_RELAYPOSITIONS_H

#include <velk/VelkExport.h>
#include <velk/model/EDAComponent.h>
#include <velk/model/EDAPart.h>
#include <velk/model/RelayContacts.h>
#include <velk/switching/RelayTable.h>

#include <QList>
#include <QSharedPointer>
#include <QString>
#include <QStringList>

#include <optional>

namespace Velk {

/// What tells the positions of a relay: the first of these that does.
enum class PositionsRule
{
    Field,          ///< its field `Positions`
    Table,          ///< a row of a table of relays
    ContactNumbers, ///< pin numbers as in EN 50005: 11 12 14
    PinNames,       ///< pins named COM, NO and NC
    TwoPins,        ///< no pins but two, and maybe a coil: a contact that closes
    NoContacts,     ///< nothing but a coil
    Unknown,        ///< none of these
};

/// A text of positions that is wrong, or relays of one gang that do not fit: a plain value.
struct VELK_EXPORT PositionsError
{
    QStringList components; ///< references of those that it is about, sorted
    QString place;          ///< of the text: "field Positions", or of a row, "relays.csv:3"; empty for gangs
    QString text;           ///< the one that is wrong; for gangs what the field `Gang` holds
    qsizetype column;       ///< where it is wrong, counted from 1; 0 for gangs
    QString problem;        ///< "expected PIN-PIN, not '12'"

    /// "field Positions, column 3 of '/ 12': expected PIN-PIN, not '12'".
    QString description() const;
    /// The same behind the references: "K5#2: field Positions, ...".
    QString message() const;
};

/// The positions of one relay and what tells them.
struct RelayPositions
{
    PositionsRule rule;                       ///< Unknown also where a text is wrong
    QList<ContactPosition> positions;         ///< the first one is rest; none for NoContacts and Unknown
    std::optional<PositionsError> error = {}; ///< where a text is wrong, which then makes the positions unknown
};

/// Whether a relay's pin of this number is one of a coil: A1 to A9 and B1 to B9, in capitals.
VELK_EXPORT bool isCoil(const QString &pinNumber);

/// What \a relay can do by its properties, by its \a part and by tables, of which the first one with a row for the part
/// holds and the one that is built in comes last. A null part, as of a component whose part the netlist lacks, has no
/// pins that anybody knows.
VELK_EXPORT RelayPositions positionsOf(const EDAComponent &relay, const QSharedPointer<EDAPart> &part,
                                       const QList<RelayTable> &tables);
}

#endif
