#include "cli/formats/FindingFormats.h"

#include "cli/formats/Count.h"
#include "cli/formats/Json.h"
#include "cli/terminal/Colour.h"
#include "cli/terminal/Output.h"
#include "cli/terminal/Terminal.h"

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

QString messageLine(const Finding &finding, const Colour &colour)
{
    const QString places = colour.paint(Colour::Role::Reference, finding.placesText());
    return u"  "_s + places + u": "_s + printable(finding.text) + u'\n';
}

/// The files that a finding is about, or whose components and nets, in their order.
QJsonArray filesOf(const Finding &finding, const QStringList &files)
{
    QJsonArray result;
    for (const int number : finding.netlists)
        result.append(files.at(number - 1));
    return result;
}

QByteArray findingsToText(const CheckReport &report, const Colour &colour)
{
    constexpr qsizetype most = 10;
    QString text;
    for (auto first = report.findings.cbegin(); first != report.findings.cend();) {
        const auto isOther = [&](const Finding &finding) { return finding.code != first->code; };
        const auto end = std::find_if(first, report.findings.cend(), isOther);
        const qsizetype count = end - first;
        text += u"%1: %2\n"_s.arg(colour.paint(Colour::Role::Heading, first->name()), countOf(count, u"finding"_s));
        const qsizetype shown = report.showsAll || count <= most + 1 ? count : most;
        for (qsizetype i = 0; i < shown; ++i)
            text += messageLine(*(first + i), colour);
        if (shown < count)
            text += u"  and %1 more; --all shows them\n"_s.arg(count - shown);
        text += u"  > %1\n\n"_s.arg(first->advice());
        first = end;
    }
    text += u"%1 in %2, %3\n"_s.arg(countOf(report.findings.size(), u"finding"_s),
                                    countOf(report.files.size(), u"netlist"_s),
                                    countOf(report.componentCount, u"component"_s));
    return text.toUtf8();
}

QByteArray findingsToJson(const CheckReport &report)
{
    QJsonArray findings;
    for (const Finding &finding : report.findings) {
        findings.append(QJsonObject{{u"code"_s, finding.name()},
                                    {u"message"_s, finding.message()},
                                    {u"components"_s, QJsonArray::fromStringList(finding.components)},
                                    {u"nets"_s, QJsonArray::fromStringList(finding.nets)},
                                    {u"netlists"_s, filesOf(finding, report.files)},
                                    {u"advice"_s, finding.advice()}});
    }
    return jsonDocument({{u"findings"_s, findings}});
}

void writeAsText(const CheckReport &report, const OutputTarget &target)
{
    writeText(target.fileName, findingsToText(report, Colour::forOutput(target.fileName)));
}

void writeAsJson(const CheckReport &report, const OutputTarget &target)
{
    writeOutput(target.fileName, findingsToJson(report));
}
}

const Formats<CheckReport> &findingFormats()
{
    static const Formats<CheckReport> formats{{"text", writeAsText}, {"json", writeAsJson}};
    return formats;
}
}
