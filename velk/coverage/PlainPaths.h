#ifndef VELK_COVERAGE_PLAINPATHS_H
#define VELK_COVERAGE_PLAINPATHS_H

#include <velk/coverage/ComponentNumbers.h>
#include <velk/coverage/PathFinder.h>
#include <velk/routing/NodeWithComponent.h>
#include <velk/routing/Routing.h>

#include <QList>

namespace Velk {

/// By a query for each pair, on any provider.
class PlainPaths : public PathFinder
{
public:
    /// All but the routing have to stay.
    PlainPaths(const Routing &configuredRouting, const ComponentNumbers &componentNumbers,
               const QList<NodeWithComponent> &sourcePins, const QList<NodeWithComponent> &dutPins);

    std::vector<Path> shortestPaths(qsizetype source, const std::vector<qsizetype> &wanted, int without) override;
    Path firstPath(qsizetype source, qsizetype dut, int switches) override;
    bool isOnAnyPath(int component) override;

private:
    QList<TracedPath> find(const Routing &searching, qsizetype source, qsizetype dut) const;
    Path firstPath(const Routing &searching, qsizetype source, qsizetype dut) const;

    const Routing routing;
    const ComponentNumbers &numbers;
    const QList<NodeWithComponent> &sources;
    const QList<NodeWithComponent> &duts;
};
}

#endif
