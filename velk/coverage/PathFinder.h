#ifndef VELK_COVERAGE_PATHFINDER_H
#define VELK_COVERAGE_PATHFINDER_H

#include <QtGlobal>

#include <optional>
#include <vector>

namespace Velk {

/// Finds paths from one source pin of a matrix to its DUT pins. Components are numbers. All of it throws
/// EDASearchCalledOffException.
class PathFinder
{
public:
    /// The components that a path crosses, in any order, or nothing if there is no path.
    using Path = std::optional<std::vector<int>>;

    static constexpr int none = -1;

    PathFinder() = default;
    PathFinder(const PathFinder &other) = delete;
    PathFinder &operator=(const PathFinder &other) = delete;
    virtual ~PathFinder() = default;

    /// One of those with the fewest switches to each of these DUT pins that do not cross a component, or none.
    virtual std::vector<Path> shortestPaths(const std::vector<qsizetype> &duts, int without) = 0;
    /// The one that comes first.
    virtual Path firstPath(qsizetype dut) = 0;
    /// Whether there is one that crosses the component.
    virtual bool hasPathOver(int component, qsizetype dut) = 0;
};
}

#endif
