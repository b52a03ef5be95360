#include <velk/check/FileChecks.h>

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QMap>

#include <utility>

using namespace Qt::StringLiterals;

namespace Velk {

namespace {

QByteArray hashOf(const QString &file)
{
    QFile device(file);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    return device.open(QIODevice::ReadOnly) && hash.addData(&device) ? hash.result() : QByteArray();
}

/// What the files that may hold the same have in common; a pipe, which cannot be read twice, has nothing.
QHash<qint64, QList<int>> numbersBySize(const QList<CheckedFile> &files)
{
    QHash<qint64, QList<int>> numbers;
    for (int i = 0; i < files.size(); ++i) {
        const QFileInfo info(files.at(i).name);
        if (info.isFile())
            numbers[info.size()].append(i + 1);
    }
    return numbers;
}

SingleFinding sameNetlist(const QList<CheckedFile> &files, const QList<int> &numbers)
{
    QStringList names;
    QStringList places;
    for (const int number : numbers) {
        names.append(files.at(number - 1).name);
        places.append(u"#%1"_s.arg(number));
    }
    names.removeDuplicates();
    SingleFinding finding(FindingCode::SameNetlistTwice, names, u"the same netlist given as "_s + listed(places), {});
    finding.netlists = numbers;
    return finding;
}

QString effectOf(const KiCadRepetition &repetition)
{
    const QString count = QString::number(repetition.count);
    switch (repetition.kind) {
    case KiCadRepetition::Kind::List:
        return u"has %1 lists '%2', and the first one holds"_s.arg(count, repetition.name);
    case KiCadRepetition::Kind::Part:
        return u"has %1 parts '%2' with different pins, and the last one holds"_s.arg(count, repetition.name);
    case KiCadRepetition::Kind::Component:
        return (repetition.isMerged ? u"%1 components have this reference, taken as one"_s
                                    : u"%1 components have this reference, and the last one holds"_s)
            .arg(count);
    case KiCadRepetition::Kind::Net:
        return u"%1 nets have this name, and the last one holds"_s.arg(count);
    }
    return {};
}

SingleFinding findingOf(const KiCadRepetition &repetition, const QString &file, int number)
{
    const QStringList numbered{u"%1#%2"_s.arg(repetition.name, QString::number(number))};
    switch (repetition.kind) {
    case KiCadRepetition::Kind::Component:
        return {FindingCode::ListedTwice, numbered, effectOf(repetition), numbered};
    case KiCadRepetition::Kind::Net:
        return {FindingCode::ListedTwice, numbered, effectOf(repetition), {}, numbered};
    default:
        SingleFinding finding(FindingCode::ListedTwice, {file}, effectOf(repetition), {});
        finding.netlists = {number};
        return finding;
    }
}

/// Whether some of it is lost, or what was meant for several components is one.
bool isWorthTelling(const KiCadRepetition &repetition)
{
    return !repetition.isMerged || repetition.kind == KiCadRepetition::Kind::Component;
}

QList<SingleFinding> sameNetlists(const QList<CheckedFile> &files)
{
    QMap<int, SingleFinding> findings; // by the first of the numbers
    const auto candidates = numbersBySize(files);
    for (const auto &sameSize : candidates) {
        if (sameSize.size() < 2)
            continue;
        QHash<QByteArray, QList<int>> numbersByHash;
        for (const int number : sameSize)
            numbersByHash[hashOf(files.at(number - 1).name)].append(number);
        numbersByHash.remove(QByteArray()); // cannot be read any more
        for (const auto &same : std::as_const(numbersByHash)) {
            if (same.size() > 1)
                findings.insert(same.first(), sameNetlist(files, same));
        }
    }
    return findings.values();
}
}

QList<SingleFinding> fileFindings(const QList<CheckedFile> &files)
{
    QList<SingleFinding> findings = sameNetlists(files);
    for (int i = 0; i < files.size(); ++i) {
        for (const KiCadRepetition &repetition : files.at(i).repetitions) {
            if (isWorthTelling(repetition))
                findings.append(findingOf(repetition, files.at(i).name, i + 1));
        }
    }
    return findings;
}
}
