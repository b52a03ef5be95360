#include "cli/formats/CoverageFormats.h"

#include "cli/formats/Count.h"
#include "cli/formats/NoRouteText.h"
#include "cli/formats/html/CoveragePage.h"
#include "cli/terminal/Colour.h"
#include "cli/terminal/Message.h"
#include "cli/terminal/Output.h"
#include "cli/terminal/Terminal.h"

#include <velk/naming/References.h>

#include <QHash>
#include <QIODevice>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

constexpr int unreached = CoverageMatrix::unreached;

using MatrixPins = QList<NodeWithComponent>;

/// "1 pair is", "2 pairs are"
QString countWithVerb(qsizetype count, const QString &noun)
{
    return u"%1 %2"_s.arg(countOf(count, noun), count == 1 ? u"is"_s : u"are"_s);
}

/// Of a comparison, in one line.
QString comparisonSummary(const CoverageComparison &comparison)
{
    return u"compared with %1: %2 lost, %3 gained, %4 longer, %5 shorter"_s.arg(
        comparison.fileName, countOf(comparison.lost.size(), u"pair"_s), QString::number(comparison.gained.size()),
        QString::number(comparison.longer.size()), QString::number(comparison.shorter.size()));
}

/// Pins as people name them, also those of a matrix that was saved before.
class PinTexts
{
public:
    explicit PinTexts(const CoverageReport &report)
    {
        for (const MatrixPins &pins : {report.sources, report.duts}) {
            for (const NodeWithComponent &pin : pins)
                texts.insert(nameOf(pin), report.pinNames.text(pin.node->ref, pin.node->pin));
        }
    }

    QString of(const QString &name) const { return texts.value(name, name); }

private:
    QHash<QString, QString> texts;
};

/// A line for each.
QStringList differenceLines(const CoverageReport &report)
{
    const PinTexts pins(report);
    QStringList lines;
    const auto add = [&](const QString &what, const QList<PairDifference> &differences, const auto &remark) {
        for (const PairDifference &difference : differences)
            lines.append(u"%1: %2 to %3 (%4)"_s.arg(what, pins.of(difference.source), pins.of(difference.dut),
                                                    remark(difference)));
    };
    const auto before = [](const PairDifference &difference) {
        return u"%1 before"_s.arg(switchCount(difference.before));
    };
    const auto beforeAndNow = [&](const PairDifference &difference) {
        return u"%1, %2 now"_s.arg(before(difference), QString::number(difference.now));
    };
    const auto now = [](const PairDifference &difference) { return switchCount(difference.now); };
    const CoverageComparison &comparison = *report.comparison;
    add(u"lost"_s, comparison.lost, before);
    add(u"longer"_s, comparison.longer, beforeAndNow);
    add(u"shorter"_s, comparison.shorter, beforeAndNow);
    add(u"gained"_s, comparison.gained, now);
    return lines;
}

/// A report in words.
class CoverageText
{
public:
    CoverageText(const CoverageReport &coverageReport, const Colour &textColour)
        : report(coverageReport)
        , colour(textColour)
    {
    }

    QString text() const
    {
        QString result = countText() + u'\n';
        result += unreachedText() + unusedText();
        if (report.critical)
            result += criticalText(*report.critical);
        if (report.comparison)
            result += comparisonText();
        return result;
    }

private:
    // "1936 of 5376 pairs are reached: 16 over 0 switches, 1920 over 3"
    QString countText() const
    {
        QMap<int, qsizetype> counts; // by number of switches
        for (const auto &row : report.rows) {
            for (const int switches : row)
                ++counts[switches];
        }
        counts.remove(unreached);
        qsizetype reached = 0;
        QStringList texts;
        for (auto count = counts.cbegin(); count != counts.cend(); ++count) {
            reached += *count;
            texts.append(u"%1 over %2"_s.arg(QString::number(*count), texts.isEmpty() ? switchCount(count.key())
                                                                                      : QString::number(count.key())));
        }
        const qsizetype pairs = report.sources.size() * report.duts.size();
        const QString text = u"%1 of %2 %3 reached"_s.arg(QString::number(reached), countOf(pairs, u"pair"_s),
                                                          reached == 1 ? u"is"_s : u"are"_s);
        return reached == 0 ? text : u"%1: %2"_s.arg(text, texts.join(u", "_s));
    }

    QString unreachedText() const
    {
        MatrixPins sources;
        QList<bool> areReached(report.duts.size(), false);
        for (qsizetype source = 0; source < report.sources.size(); ++source) {
            bool reachesAny = false;
            for (qsizetype dut = 0; dut < report.duts.size(); ++dut) {
                const bool isReached = report.rows.at(source).at(dut) != unreached;
                reachesAny = reachesAny || isReached;
                areReached[dut] = areReached.at(dut) || isReached;
            }
            if (!reachesAny)
                sources.append(report.sources.at(source));
        }
        MatrixPins duts;
        for (qsizetype dut = 0; dut < report.duts.size(); ++dut) {
            if (!areReached.at(dut))
                duts.append(report.duts.at(dut));
        }
        return section(u"%1 reached by no source"_s.arg(countWithVerb(duts.size(), u"DUT pin"_s)), pinLines(duts)) +
               section(u"%1 no DUT"_s.arg(sources.size() == 1 ? u"1 source pin reaches"_s
                                                              : u"%1 source pins reach"_s.arg(sources.size())),
                       pinLines(sources));
    }

    QString unusedText() const
    {
        return section(u"%1 on no first route, but on others"_s.arg(
                           countWithVerb(report.onOtherRoutes.size(), u"component"_s)),
                       refLines(report.onOtherRoutes)) +
               section(u"%1 on no route at all"_s.arg(countWithVerb(report.onNoRoute.size(), u"component"_s)),
                       refLines(report.onNoRoute));
    }

    QString criticalText(const QList<CriticalPairs> &critical) const
    {
        QStringList lines;
        for (const CriticalPairs &pairs : critical)
            lines.append(u"  %1: %2"_s.arg(colour.paint(Colour::Role::Reference, pairs.component->ref),
                                           countOf(pairs.lost.size(), u"pair"_s)));
        if (lines.isEmpty())
            return u"no component is critical\n"_s;
        return section(u"%1 critical, with the number of pairs lost without each"_s.arg(
                           countWithVerb(critical.size(), u"component"_s)),
                       lines);
    }

    QString comparisonText() const
    {
        QStringList lines = differenceLines(report);
        for (QString &line : lines)
            line = u"  "_s + printable(line);
        const QString summary = comparisonSummary(*report.comparison);
        return lines.isEmpty() ? printable(summary) + u'\n' : section(summary, lines);
    }

    /// Empty without lines.
    QString section(const QString &heading, const QStringList &lines) const
    {
        return lines.isEmpty() ? QString()
                               : u"%1:\n%2\n"_s.arg(colour.paint(Colour::Role::Heading, heading), lines.join(u'\n'));
    }

    /// Grouped by their components.
    QStringList pinLines(const MatrixPins &pins) const
    {
        QStringList lines;
        for (qsizetype first = 0; first < pins.size();) {
            const QString &ref = pins.at(first).node->ref;
            QStringList texts;
            qsizetype end = first;
            for (; end < pins.size() && pins.at(end).node->ref == ref; ++end)
                texts.append(report.pinNames.text(ref, pins.at(end).node->pin).mid(ref.size() + 1));
            const QString line = listing(ref + u':', texts);
            lines.append(u"  "_s + colour.paint(Colour::Role::Reference, ref) + line.mid(ref.size()));
            first = end;
        }
        return lines;
    }

    static QStringList refLines(const QList<QSharedPointer<EDAComponent>> &components)
    {
        return components.isEmpty() ? QStringList() : QStringList{u" "_s + listing({}, refsOf(components))};
    }

    /// "J1#3: 1, 2, 5", on as many lines as that takes. What is printable is for the caller to see to in the head.
    static QString listing(const QString &head, const QStringList &texts)
    {
        constexpr qsizetype widest = 100;
        QString result = head;
        qsizetype width = head.size();
        for (qsizetype i = 0; i < texts.size(); ++i) {
            const QString text = printable(texts.at(i)) + (i + 1 < texts.size() ? u","_s : QString());
            const bool fits = width + 1 + text.size() <= widest;
            result += (fits ? u" "_s : u"\n    "_s) + text;
            width = (fits ? width + 1 : 4) + text.size();
        }
        return result;
    }

    const CoverageReport &report;
    const Colour &colour;
};

QJsonArray namesToJson(const MatrixPins &pins)
{
    QJsonArray result;
    for (const NodeWithComponent &pin : pins)
        result.append(nameOf(pin));
    return result;
}

QJsonArray rowToJson(const QList<int> &row)
{
    QJsonArray result;
    for (const int switches : row)
        result.append(switches == unreached ? QJsonValue() : switches);
    return result;
}

QJsonObject criticalToJson(const CriticalPairs &critical)
{
    QJsonArray lost;
    for (const auto &[source, dut] : critical.lost)
        lost.append(QJsonArray{source, dut});
    return {{u"component"_s, critical.component->ref}, {u"lost"_s, lost}};
}

QJsonArray namesToJson(const QList<PairDifference> &differences)
{
    QJsonArray result;
    for (const PairDifference &difference : differences)
        result.append(QJsonArray{difference.source, difference.dut});
    return result;
}

QJsonArray changesToJson(const QList<PairDifference> &differences)
{
    QJsonArray result;
    for (const auto &[source, dut, before, now] : differences)
        result.append(QJsonArray{source, dut, before, now});
    return result;
}

QJsonObject comparisonToJson(const CoverageComparison &comparison)
{
    return {{u"lost"_s, namesToJson(comparison.lost)},
            {u"gained"_s, namesToJson(comparison.gained)},
            {u"longer"_s, changesToJson(comparison.longer)},
            {u"shorter"_s, changesToJson(comparison.shorter)}};
}

/// On one line.
template <typename Json>
QByteArray compact(const Json &json)
{
    return QJsonDocument(json).toJson(QJsonDocument::Compact);
}

/// One element on a line, so that programs that compare texts find what is different.
template <typename Elements, typename ToJson>
QByteArray compactLines(const Elements &elements, const ToJson &toJson)
{
    QByteArrayList lines;
    for (const auto &element : elements)
        lines.append("\n        " + compact(toJson(element)));
    return '[' + lines.join(',') + (lines.isEmpty() ? "]" : "\n    ]");
}

void coverageToJson(const CoverageReport &report, QIODevice &device)
{
    device.write("{\n    \"sources\": " + compact(namesToJson(report.sources)));
    device.write(",\n    \"duts\": " + compact(namesToJson(report.duts)));
    device.write(",\n    \"switches\": " + compactLines(report.rows, rowToJson));
    const auto writeNames = [&](const QByteArray &member, const QStringList &names) {
        if (!names.isEmpty())
            device.write(",\n    \"" + member + "\": " + compact(QJsonArray::fromStringList(names)));
    };
    writeNames("excludedComponents", report.routing.excludedComponents());
    writeNames("excludedNets", report.routing.excludedNets());
    if (report.critical)
        device.write(",\n    \"critical\": " + compactLines(*report.critical, criticalToJson));
    if (report.comparison)
        device.write(",\n    \"compared\": " + compact(comparisonToJson(*report.comparison)));
    device.write("\n}\n");
}

void coverageToCsv(const CoverageReport &report, CsvReader reader, QIODevice &device)
{
    CsvWriter csv(device, reader);
    QStringList cells{u"source"_s};
    for (const NodeWithComponent &dut : report.duts)
        cells.append(nameOf(dut));
    csv.write(cells);
    for (qsizetype source = 0; source < report.sources.size(); ++source) {
        cells = {nameOf(report.sources.at(source))};
        for (const int switches : report.rows.at(source))
            cells.append(switches == unreached ? QString() : QString::number(switches));
        csv.write(cells);
    }
}

void writeAsText(const CoverageReport &report, const OutputTarget &target)
{
    const Colour colour = Colour::forOutput(target.fileName);
    writeText(target.fileName, CoverageText(report, colour).text().toUtf8());
}

void writeAsCsv(const CoverageReport &report, const OutputTarget &target)
{
    writeOutput(target.fileName, [&](QIODevice &device) { coverageToCsv(report, target.csvReader, device); });
    if (!report.comparison)
        return;
    printMessage(u"velk: "_s + comparisonSummary(*report.comparison));
    for (const QString &line : differenceLines(report))
        printMessage(u"velk: "_s + line);
}

void writeAsJson(const CoverageReport &report, const OutputTarget &target)
{
    writeOutput(target.fileName, [&](QIODevice &device) { coverageToJson(report, device); });
}

void writeAsHtml(const CoverageReport &report, const OutputTarget &target)
{
    writeOutput(target.fileName, coverageToPage(report));
}
}

const Formats<CoverageReport> &coverageFormats()
{
    static const Formats<CoverageReport> formats{
        {"text", writeAsText}, {"csv", writeAsCsv}, {"json", writeAsJson}, {"html", writeAsHtml}};
    return formats;
}

bool tellsFirstRoutes(const std::string &format)
{
    return format == "html";
}

bool tellsUnused(const std::string &format)
{
    return format == "text";
}
}
