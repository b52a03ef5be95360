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
    JoinedByEmptyIdentifier,
    IdentifierMissing,
    IdentifierTwice,
    IdentifierOnOtherType,
    NodeOnTwoNets,
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
    PinAloneOnNet
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
    QString message;          ///< "PLACE: TEXT" with names in single quotes
    QStringList refs = {};    ///< of the components that it is about
    QStringList nets = {};    ///< that it is about, as they are called on their boards
    QList<int> netlists = {}; ///< that it is about as a whole, by their positions from 1 on
};

/// "K1, K2 and 7 more": the first few names.
QString listed(const QStringList &names);
/// "pin '1'" or "pins '1', '2' and 7 more".
QString listedPins(const QStringList &numbers);
}

#endif
