#include "cli/formats/StateFormats.h"

#include "cli/formats/Count.h"
#include "cli/formats/Json.h"
#include "cli/formats/PaintedNames.h"
#include "cli/formats/RelayText.h"
#include "cli/formats/html/StatePage.h"
#include "cli/terminal/Output.h"

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

using Pins = QList<InterfacePin>;

QJsonArray couplingsToJson(const QList<PinCoupling> &couplings)
{
    QJsonArray result;
    for (const auto &[sets, passives] : couplings)
        result.append(
            QJsonObject{{u"sets"_s, setsToJson(sets)}, {u"passives"_s, QJsonArray::fromStringList(passives)}});
    return result;
}

void insertExpectation(const ExpectationReport &expectation, QJsonObject &members)
{
    QJsonArray missing;
    for (const int connection : expectation.compared.missing) {
        const auto &[from, to] = expectation.connections.at(connection);
        missing.append(
            QJsonObject{{u"connection"_s, expectation.rows.at(connection)}, {u"pins"_s, pinsToJson({from, to})}});
    }
    QJsonArray through;
    for (const auto &[connection, passives] : expectation.compared.through)
        through.append(QJsonObject{{u"connection"_s, expectation.rows.at(connection)},
                                   {u"passives"_s, QJsonArray::fromStringList(passives)}});
    QJsonArray shorts;
    for (const auto &[sets, relays] : expectation.compared.shorts)
        shorts.append(QJsonObject{{u"sets"_s, setsToJson(sets)}, {u"relays"_s, QJsonArray::fromStringList(relays)}});
    members.insert(u"missing"_s, missing);
    members.insert(u"through"_s, through);
    members.insert(u"shorts"_s, shorts);
}

QJsonObject stepToJson(const StateStep &step, const QJsonArray &unknown)
{
    QJsonObject members{{u"step"_s, step.name},
                        {u"connected"_s, setsToJson(step.connections.connected)},
                        {u"couplings"_s, couplingsToJson(step.connections.couplings)},
                        {u"unknown"_s, unknown}};
    if (step.expectation)
        insertExpectation(*step.expectation, members);
    return members;
}

/// Steps in words.
class StateText
{
public:
    StateText(const StateReport &stateReport, const Colour &textColour)
        : report(stateReport)
        , names(stateReport.pinNames, textColour)
    {
    }

    QString stepText(const StateStep &step) const
    {
        const QString relays = names.refs(settingTexts(report.model, step.positions));
        const QString heading = names.heading(u"Step "_s + step.name);
        QString text = u"%1: %2\n"_s.arg(heading, relays.isEmpty() ? u"all relays at rest"_s : relays);
        QStringList lines = connectionLines(step.connections);
        if (step.expectation)
            lines += expectationLines(*step.expectation);
        for (const QString &line : std::as_const(lines))
            text += u"  "_s + line + u'\n';
        return text;
    }

private:
    QStringList connectionLines(const StateConnections &connections) const
    {
        QStringList lines;
        for (const Pins &pins : connections.connected)
            lines.append(u"connected: "_s + names.pins(pins));
        if (lines.isEmpty())
            lines.append(u"nothing is connected"_s);
        for (const auto &[sets, passives] : connections.couplings)
            lines.append(u"coupled by %1: %2"_s.arg(names.refs(passives), setsText(sets)));
        return lines;
    }

    QStringList expectationLines(const ExpectationReport &expectation) const
    {
        const auto &connections = expectation.connections;
        const auto &compared = expectation.compared;
        QStringList lines;
        for (const auto &[connection, passives] : compared.through)
            lines.append(u"through %1: %2"_s.arg(names.refs(passives), connectionText(connections.at(connection))));
        for (const int connection : compared.missing)
            lines.append(names.problem(u"missing"_s) + u": "_s + connectionText(connections.at(connection)));
        for (const auto &[sets, relays] : compared.shorts) {
            const QString by = relays.isEmpty() ? QString() : u" by "_s + names.refs(relays);
            lines.append(u"%1%2: %3"_s.arg(names.problem(u"short"_s), by, setsText(sets)));
        }
        return lines;
    }

    QString setsText(const QList<Pins> &sets) const
    {
        QStringList texts;
        for (const Pins &pins : sets)
            texts.append(names.pins(pins));
        return texts.join(u" | "_s);
    }

    QString connectionText(const ExpectedConnection &connection) const
    {
        return u"%1 to %2"_s.arg(names.pin(connection.from), names.pin(connection.to));
    }

    const StateReport &report;
    const PaintedNames names;
};

QString summaryText(const QList<StateStep> &steps)
{
    qsizetype missing = 0;
    qsizetype shorts = 0;
    for (const StateStep &step : steps) {
        missing += step.expectation->compared.missing.size();
        shorts += step.expectation->compared.shorts.size();
    }
    return u"%1: %2 missing, %3\n"_s.arg(countOf(steps.size(), u"step"_s), countOf(missing, u"connection"_s),
                                         countOf(shorts, u"short"_s));
}

QByteArray statesToText(const StateReport &report, const Colour &colour)
{
    const StateText words(report, colour);
    QString text;
    for (const StateStep &step : report.steps)
        text += words.stepText(step);
    if (!report.steps.isEmpty() && report.steps.first().expectation)
        text += summaryText(report.steps);
    return text.toUtf8();
}

void writeAsText(const StateReport &report, const OutputTarget &target)
{
    writeText(target.fileName, statesToText(report, Colour::forOutput(target.fileName)));
}

void writeAsJson(const StateReport &report, const OutputTarget &target)
{
    const auto unknown = QJsonArray::fromStringList(report.model.unknownComponents());
    writeOutput(target.fileName, [&](QIODevice &device) {
        writeJson(device, {}, u"steps"_s, report.steps.size(),
                  [&](qsizetype i) { return stepToJson(report.steps.at(i), unknown); });
    });
}

void writeAsPage(const StateReport &report, const OutputTarget &target)
{
    writeOutput(target.fileName, statesToPage(report));
}
}

const Formats<StateReport> &stateFormats()
{
    static const Formats<StateReport> formats{{"text", writeAsText}, {"json", writeAsJson}, {"html", writeAsPage}};
    return formats;
}
}
