#include "cli/check/FileChecks.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QMap>

#include <utility>

using namespace Qt::StringLiterals;

namespace VelkCli {

namespace {

QByteArray hashOf(const QString &file)
{
    QFile device(file);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    return device.open(QIODevice::ReadOnly) && hash.addData(&device) ? hash.result() : QByteArray();
}

/// What the files that may hold the same have in common; a pipe, which cannot be read twice, has nothing.
QHash<qint64, QList<int>> numbersBySize(const QStringList &files)
{
    QHash<qint64, QList<int>> numbers;
    for (int i = 0; i < files.size(); ++i) {
        const QFileInfo info(files.at(i));
        if (info.isFile())
            numbers[info.size()].append(i + 1);
    }
    return numbers;
}

Finding repetition(const QStringList &files, const QList<int> &numbers)
{
    QStringList names;
    QStringList places;
    for (const int number : numbers) {
        names.append(files.at(number - 1));
        places.append(u"#%1"_s.arg(number));
    }
    names.removeDuplicates();
    return {FindingCode::SameNetlistTwice,
            u"%1: the same netlist given as %2"_s.arg(listed(names), listed(places)),
            {},
            {},
            numbers};
}
}

QList<Finding> fileFindings(const QStringList &files)
{
    QMap<QList<int>, Finding> findings; // by the numbers, so in the order of the first
    const auto candidates = numbersBySize(files);
    for (const auto &sameSize : candidates) {
        if (sameSize.size() < 2)
            continue;
        QHash<QByteArray, QList<int>> numbersByHash;
        for (const int number : sameSize)
            numbersByHash[hashOf(files.at(number - 1))].append(number);
        numbersByHash.remove(QByteArray()); // cannot be read any more
        for (const auto &same : std::as_const(numbersByHash)) {
            if (same.size() > 1)
                findings.insert(same, repetition(files, same));
        }
    }
    return findings.values();
}
}
