#ifndef VELK_CLI_CHECK_FINDING_H
#define VELK_CLI_CHECK_FINDING_H

#include <QList>
#include <QString>
#include <QStringList>

#include <string>
#include <vector>

namespace VelkCli {

/// What velk check looks for, the most serious first.
enum class FindingCode
{
    SameNetlistTwice,
    ListedTwice,
    JoinedByEmptyIdentifier,
    IdentifierMissing,
    IdentifierTwice,
    IdentifierOnOtherType,
    NodeOnTwoNets,
    ConnectorPinsSwapped,
    PolesOrCoil,
    IdentifierOnce,
    ConnectorPinsDiffer,
    NoType,
    NotPopulated,
    SimilarNames,
    PinOnNoNet,
    SourceWithoutDevice,
    DutWithoutBench,
    DutWithoutName,
    DuplicateIniKey,
    BenchWithoutDut,
    PinAloneOnNet,
    PinNotWired
};

struct FindingKind
{
    FindingCode code;
    const char *name; ///< as the user writes it; never changes
    const char *advice;
};

/// All there are, in the order of FindingCode.
const std::vector<FindingKind> &findingKinds();
std::vector<std::string> findingNames();
const FindingKind &kindOf(FindingCode code);

struct Finding
{
    FindingCode code;
    QStringList places;       ///< what it is found at: components, nets, files, or groups of sources
    QString text;             ///< with names in single quotes
    QStringList refs = {};    ///< of the components that it is about
    QStringList nets = {};    ///< that it is about, as they are called on their boards
    QList<int> netlists = {}; ///< that it is about as a whole, by their positions from 1 on
    int group = 0;            ///< neighbours of one code and group, other than 0, are told as one
};

/// One for each of these components, all of the same group.
QList<Finding> findingsOfEach(FindingCode code, const QStringList &refs, const QString &text, int group);
/// "PLACES: TEXT".
QString messageOf(const Finding &finding);
/// The findings with the groups of neighbours put together. Those of a group differ in what they are about alone.
QList<Finding> gathered(const QList<Finding> &findings);

/// "K1, K2 and 7 more": the first few names.
QString listed(const QStringList &names);
/// "pin '1'" or "pins '1', '2' and 7 more".
QString listedPins(const QStringList &numbers);
}

#endif
