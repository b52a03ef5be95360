#ifndef VELK_CHECK_FINDING_H
#define VELK_CHECK_FINDING_H

#include <velk/VelkExport.h>

#include <QList>
#include <QString>
#include <QStringList>

namespace Velk {

/// What SystemCheck looks for, the most serious first; docs/check.md explains each under its name.
enum class FindingCode
{
    SameNetlistTwice,        ///< "same-netlist-twice", and so on
    ListedTwice,             ///< an element of a netlist, of which one alone holds
    JoinedByEmptyIdentifier, ///< nets, by a connector without Identifier
    IdentifierMissing,       ///< of a connector
    IdentifierTwice,         ///< of connectors of one board
    IdentifierOnOtherType,   ///< that of a connector
    NodeOnTwoNets,           ///< a pin that several nets name
    ConnectorPinsSwapped,    ///< by the names of their nets
    PositionsWrong,          ///< of a relay, by a text that cannot be read
    GangDiffers,             ///< of relays, since their numbers of positions do
    CoilCrossed,             ///< of a relay, by routes
    PositionsUnknown,        ///< of a relay, which routes cross as it is drawn
    GangOnce,                ///< of a relay that is the only one in it
    IdentifierOnce,          ///< of a connector into which nothing is plugged
    ConnectorPinsDiffer,     ///< of two that are plugged together
    NoType,                  ///< of a component on nets
    NotPopulated,            ///< but there in ways as drawn, or joined
    SimilarNames,            ///< probably meant to be the same
    PinOnNoNet,              ///< of a component that can be switched through
    SourceWithoutDevice,     ///< which its INI entries lack
    DutWithoutBench,         ///< so that it is written nowhere
    DutWithoutName,          ///< which its INI entries lack
    DuplicateIniKey,         ///< in a channel table
    BenchWithoutDut,         ///< or a bench of an absurd number
    PinAloneOnNet,           ///< with all netlists plugged together
    PinNotWired,             ///< in the drawing
};

/// One thing that is probably not as it is meant: a plain value. References and nets are those of the boards, with the
/// number of their netlist, as in "K1#2"; lists of them are in the order in which they are told.
class VELK_EXPORT Finding
{
public:
    FindingCode code;       ///< what was looked for
    QStringList places;     ///< what it is found at: components, nets, files, or groups of sources; never empty
    QString text;           ///< what is wrong there, with names in single quotes: "a connector without Identifier"
    QStringList components; ///< the references of those that it is about
    QStringList nets;       ///< those that it is about
    QStringList pins;       ///< numbers of pins of the components that it is about
    QList<int> netlists;    ///< those that it is about or whose elements it is, by their positions from 1 on; ascending

    /// About no component, net, pin or netlist yet.
    Finding(FindingCode findingCode, const QStringList &foundAt, const QString &what);
    ~Finding();
    Finding(const Finding &other);
    Finding &operator=(const Finding &other);
    Finding(Finding &&other) noexcept;
    Finding &operator=(Finding &&other) noexcept;

    /// That of its code, as users write it: "identifier-missing". It never changes.
    QString name() const;
    /// What to do about it, a sentence; the same for all of a code.
    QString advice() const;
    /// "K1#1, K2#1: no CompType (part 'Relay')": its places, of many the first ones, and its text.
    QString message() const;
    /// The first of its places, and how many more there are, as in message().
    QString placesText() const;

    /// Those of all codes, in the order of FindingCode.
    static QStringList names();
};
}

#endif
