#include "cli/commands/SavedMatrix.h"

#include "cli/commands/InputFile.h"
#include "cli/commands/Netlist.h"
#include "cli/terminal/CommandError.h"

#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

#include <algorithm>
#include <functional>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

constexpr int unreached = CoverageMatrix::unreached;

/// "line 3, column 5", of the last character of what was read, at which the reader mostly stops.
QString placeAtEnd(const QByteArray &read)
{
    const QByteArray line = read.mid(read.lastIndexOf('\n') + 1);
    return u"line %1, column %2"_s.arg(QString::number(read.count('\n') + 1),
                                       QString::number(std::max<qsizetype>(1, QString::fromUtf8(line).size())));
}

/// What a document says, or a CommandError where that is no matrix.
class MatrixReader
{
public:
    explicit MatrixReader(const QString &fileName)
        : name(shownName(fileName))
    {
        const QByteArray text = readInput(fileName);
        QJsonParseError error{};
        document = QJsonDocument::fromJson(text, &error);
        if (error.error != QJsonParseError::NoError)
            throw CommandError{
                u"%1: is no JSON at %2: %3"_s.arg(name, placeAtEnd(text.left(error.offset)), error.errorString())};
    }

    QStringList pins(const QString &member) const
    {
        QStringList result;
        QSet<QString> known;
        for (const QJsonValue value : list(document[member], member)) {
            const QString pin = value.toString();
            if (pin.isEmpty())
                fail(u"%1 is no name of a pin"_s.arg(element(member, result.size())));
            if (known.contains(pin))
                fail(u"%1 has the pin '%2' twice"_s.arg(member, pin));
            known.insert(pin);
            result.append(pin);
        }
        return result;
    }

    QList<QList<int>> rows(qsizetype sources, qsizetype duts) const
    {
        const QString member = u"switches"_s;
        const QJsonArray values = list(document[member], member, sources);
        QList<QList<int>> result;
        for (qsizetype i = 0; i < sources; ++i)
            result.append(row(values.at(i), element(member, i), duts));
        return result;
    }

private:
    QList<int> row(const QJsonValue &value, const QString &place, qsizetype duts) const
    {
        QList<int> result;
        for (const QJsonValue switches : list(value, place, duts)) {
            const int number = switches.toInt(unreached); // which no whole number is too
            if (number < 0 && !switches.isNull())
                fail(u"%1 is no number of switches"_s.arg(element(place, result.size())));
            result.append(number);
        }
        return result;
    }

    QJsonArray list(const QJsonValue &value, const QString &place) const
    {
        if (!value.isArray())
            fail(u"%1 is no list"_s.arg(place));
        return value.toArray();
    }

    QJsonArray list(const QJsonValue &value, const QString &place, qsizetype size) const
    {
        QJsonArray values = list(value, place);
        if (values.size() != size)
            fail(u"%1 has %2 elements, not %3"_s.arg(place, QString::number(values.size()), QString::number(size)));
        return values;
    }

    static QString element(const QString &place, qsizetype number)
    {
        return u"%1[%2]"_s.arg(place, QString::number(number));
    }

    [[noreturn]] void fail(const QString &problem) const
    {
        throw CommandError{u"%1: is no matrix that velk coverage has written: %2"_s.arg(name, problem)};
    }

    const QString name;
    QJsonDocument document;
};

using Rows = QList<QList<int>>;

QStringList namesOf(const QList<NodeWithComponent> &pins)
{
    QStringList names;
    for (const NodeWithComponent &pin : pins)
        names.append(nameOf(pin));
    return names;
}

/// Of each pin the number that it has among others, or -1.
QList<qsizetype> placesAmong(const QStringList &others, const QStringList &pins)
{
    QHash<QString, qsizetype> places;
    for (const QString &other : others)
        places.insert(other, places.size());
    QList<qsizetype> result;
    for (const QString &pin : pins)
        result.append(places.value(pin, -1));
    return result;
}

int switchesBetween(qsizetype source, qsizetype dut, const Rows &rows)
{
    return source < 0 || dut < 0 ? unreached : rows.at(source).at(dut);
}

/// What to do with a pair of pins that are reached in one matrix, with the number of switches in it and in the other.
using Visit = std::function<void(const QString &source, const QString &dut, int switches, int otherSwitches)>;

struct NamedRows
{
    QStringList sources;
    QStringList duts;
    const Rows &rows;
};

void visitReached(const NamedRows &matrix, const NamedRows &other, const Visit &visit)
{
    const auto otherSources = placesAmong(other.sources, matrix.sources);
    const auto otherDuts = placesAmong(other.duts, matrix.duts);
    for (qsizetype source = 0; source < matrix.sources.size(); ++source) {
        for (qsizetype dut = 0; dut < matrix.duts.size(); ++dut) {
            const int switches = matrix.rows.at(source).at(dut);
            if (switches != unreached)
                visit(matrix.sources.at(source), matrix.duts.at(dut), switches,
                      switchesBetween(otherSources.at(source), otherDuts.at(dut), other.rows));
        }
    }
}
}

SavedMatrix::SavedMatrix(const QString &fileName)
    : name(shownName(fileName))
{
    const MatrixReader reader(fileName);
    sources = reader.pins(u"sources"_s);
    duts = reader.pins(u"duts"_s);
    rows = reader.rows(sources.size(), duts.size());
}

CoverageComparison SavedMatrix::comparedWith(const CoverageReport &report) const
{
    const NamedRows before{sources, duts, rows};
    const NamedRows now{namesOf(report.sources), namesOf(report.duts), report.rows};
    CoverageComparison comparison;
    comparison.fileName = name;
    visitReached(before, now, [&](const QString &source, const QString &dut, int switchesBefore, int switchesNow) {
        const PairDifference difference{source, dut, switchesBefore, switchesNow};
        if (switchesNow == unreached)
            comparison.lost.append(difference);
        else if (switchesNow > switchesBefore)
            comparison.longer.append(difference);
        else if (switchesNow < switchesBefore)
            comparison.shorter.append(difference);
    });
    visitReached(now, before, [&](const QString &source, const QString &dut, int switchesNow, int switchesBefore) {
        if (switchesBefore == unreached)
            comparison.gained.append({source, dut, switchesBefore, switchesNow});
    });
    return comparison;
}
}
