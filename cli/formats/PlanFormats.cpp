#include "cli/formats/PlanFormats.h"

#include "cli/formats/Json.h"
#include "cli/formats/ModelNames.h"
#include "cli/formats/PlanJson.h"
#include "cli/formats/PlanText.h"
#include "cli/formats/PropertyColumns.h"
#include "cli/formats/html/PlanPage.h"
#include "cli/terminal/Output.h"

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

void writePlansAsText(const PlanReport &report, const OutputTarget &target)
{
    const Colour colour = Colour::forOutput(target.fileName);
    QString text;
    for (const PlanStep &step : report.steps)
        text += planStepText(report, step, colour);
    writeText(target.fileName, text.toUtf8());
}

/// Which relays a row of CSV can be of.
QList<QSharedPointer<EDAComponent>> relaysOf(const PlanReport &report)
{
    QList<QSharedPointer<EDAComponent>> relays;
    for (int component = 0; component < report.model.componentCount(); ++component) {
        if (report.model.gangOf(component) != SwitchingModel::none)
            relays.append(report.netlist.getComponentByRef(report.model.ref(component)));
    }
    return relays;
}

/// What moves in a step, as rows.
class PlanCsv
{
public:
    PlanCsv(const PlanReport &planReport, QIODevice &device, CsvReader reader)
        : report(planReport)
        , model(planReport.model)
        , csv(device, reader)
        , properties(relaysOf(planReport))
    {
        csv.write(QStringList{u"step"_s, u"order"_s, u"component"_s, u"position"_s, u"position name"_s} +
                  properties.heading());
    }

    void write(const PlanStep &step)
    {
        for (const QString &ref : refsOfGangs(model, step.planned.change.toRest))
            writeMove({step.name, u"1"_s}, ref, 0);
        for (const QString &ref : refsOfGangs(model, step.planned.change.toSet)) {
            const int gang = model.gangOf(model.componentOf(ref));
            writeMove({step.name, u"2"_s}, ref, step.planned.plan.positions[static_cast<std::size_t>(gang)]);
        }
    }

private:
    void writeMove(const QStringList &when, const QString &ref, int position)
    {
        const auto &positions = model.positions(model.componentOf(ref)).positions;
        csv.write(when + QStringList{ref, QString::number(position), positions.at(position).name} +
                  properties.cellsOf(*report.netlist.getComponentByRef(ref)));
    }

    const PlanReport &report;
    const SwitchingModel &model;
    CsvWriter csv;
    const PropertyColumns properties;
};

void writePlansAsCsv(const PlanReport &report, const OutputTarget &target)
{
    writeOutput(target.fileName, [&](QIODevice &device) {
        PlanCsv csv(report, device, target.csvReader);
        for (const PlanStep &step : report.steps)
            csv.write(step);
    });
}

void writePlansAsJson(const PlanReport &report, const OutputTarget &target)
{
    writeOutput(target.fileName, [&](QIODevice &device) {
        writeJson(device, {}, u"steps"_s, report.steps.size(),
                  [&](qsizetype i) { return planStepToJson(report, report.steps.at(i)); });
    });
}

void writePlansAsPage(const PlanReport &report, const OutputTarget &target)
{
    writeOutput(target.fileName, plansToPage(report));
}
}

const Formats<PlanReport> &planFormats()
{
    static const Formats<PlanReport> formats{
        {"text", writePlansAsText}, {"csv", writePlansAsCsv}, {"json", writePlansAsJson}, {"html", writePlansAsPage}};
    return formats;
}

bool tellsStepsWithoutPlan(const std::string &format)
{
    return format != "csv";
}
}
