#include "cli/commands/CoverageSearch.h"

#include "cli/commands/Jobs.h"
#include "cli/terminal/Progress.h"

#include <QSet>

using namespace Qt::StringLiterals;
using namespace Velk;

namespace VelkCli {

namespace {

using Components = QList<QSharedPointer<EDAComponent>>;

/// What is told of a source pin.
struct SourceRow
{
    QList<int> switches;
    QList<CriticalComponent> critical;
    Components onFirstRoutes;
    FirstRoutes firstRoutes;
};

using SourceRows = std::vector<SourceRow>;

FirstRoutes firstRoutesFrom(const NodeWithComponent &source, const QList<int> &switches, const CoverageReport &report)
{
    QList<QList<TracedPath>> routes(report.duts.size());
    for (qsizetype i = 0; i < report.duts.size(); ++i) {
        const auto &dut = report.duts.at(i);
        if (switches.at(i) != CoverageMatrix::unreached)
            routes[i] =
                report.routing.findTracedPathsBetween(source.component, source.node->pin, dut.component, dut.node->pin);
    }
    return firstRoutesOf(routes);
}

/// Each of them takes a search.
bool needsFirstRoutes(const CoverageExtras &extras, const CoverageReport &report)
{
    return extras.unused || (report.switching && !report.switching->unknownComponents().isEmpty());
}

SourceRows findRows(const CoverageMatrix &matrix, const CoverageExtras &extras, int threads,
                    const CoverageReport &report)
{
    SourceRows rows(static_cast<std::size_t>(report.sources.size()));
    const bool areFirstRoutesNeeded = needsFirstRoutes(extras, report);
    Progress::begin(u"finding out who reaches whom"_s, report.sources.size());
    workInThreads(threads, report.sources.size(), [&](qsizetype source) {
        SourceRow &row = rows[static_cast<std::size_t>(source)];
        row.switches = matrix.row(source);
        if (extras.critical)
            row.critical = matrix.criticalOf(source, row.switches);
        if (areFirstRoutesNeeded)
            row.onFirstRoutes = matrix.onFirstPathsOf(source, row.switches);
        if (extras.firstRoutes)
            row.firstRoutes = firstRoutesFrom(report.sources.at(source), row.switches, report);
    });
    return rows;
}

QList<QList<CriticalComponent>> criticalOf(const SourceRows &rows)
{
    QList<QList<CriticalComponent>> result;
    for (const SourceRow &row : rows)
        result.append(row.critical);
    return result;
}

using ComponentSet = QSet<const EDAComponent *>;

ComponentSet onFirstRoutes(const SourceRows &rows)
{
    ComponentSet result;
    for (const SourceRow &row : rows) {
        for (const auto &component : row.onFirstRoutes)
            result.insert(component.data());
    }
    return result;
}

Components switchableWithout(const ComponentSet &used, const CoverageReport &report)
{
    const auto types = report.routing.componentTypesThatAreSwitchable();
    const auto excludedRefs = report.routing.excludedComponents();
    const QSet<QString> excluded(excludedRefs.cbegin(), excludedRefs.cend());
    auto components = report.netlist.getComponents();
    components.removeIf([&](const auto &component) {
        return used.contains(component.data()) || excluded.contains(component->ref) ||
               !types.contains(component->type(), Qt::CaseInsensitive);
    });
    return components;
}

QStringList unknownAmong(const ComponentSet &used, const CoverageReport &report)
{
    QStringList refs = report.switching ? report.switching->unknownComponents() : QStringList();
    refs.removeIf([&](const QString &ref) { return !used.contains(report.netlist.getComponentByRef(ref).data()); });
    return refs;
}

/// Has the report tell which of these components are on a route at all.
void tellUnused(const Components &components, const CoverageMatrix &matrix, int threads, CoverageReport &report)
{
    std::vector<char> areUsed(static_cast<std::size_t>(components.size())); // no bits: threads write them
    Progress::begin(u"finding out what no route crosses"_s, components.size());
    workInThreads(threads, components.size(), [&](qsizetype i) {
        areUsed[static_cast<std::size_t>(i)] = matrix.isOnAnyPath(components.at(i)) ? 1 : 0;
    });
    for (qsizetype i = 0; i < components.size(); ++i) {
        auto &list = areUsed[static_cast<std::size_t>(i)] != 0 ? report.onOtherRoutes : report.onNoRoute;
        list.append(components.at(i));
    }
}
}

void findCoverage(const CoverageExtras &extras, int threads, CoverageReport &report)
{
    const CoverageMatrix matrix(report.routing, report.sources, report.duts);
    const SourceRows rows = findRows(matrix, extras, threads, report);
    for (const SourceRow &row : rows) {
        report.rows.append(row.switches);
        report.firstRoutes.append(row.firstRoutes);
    }
    if (extras.critical)
        report.critical = matrix.criticalPairs(criticalOf(rows));
    const ComponentSet used = onFirstRoutes(rows);
    report.unknownRelays = unknownAmong(used, report);
    if (extras.unused)
        tellUnused(switchableWithout(used, report), matrix, threads, report);
}
}
