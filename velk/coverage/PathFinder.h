#ifndef VELK_COVERAGE_PATHFINDER_H
#define VELK_COVERAGE_PATHFINDER_H

#include <QtGlobal>

#include <optional>
#include <vector>

namespace Velk {

/// Finds paths from the source pins of a matrix to its DUT pins. Both are given by their places, components by numbers.
/// All of it throws EDASearchCalledOffException.
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
    virtual std::vector<Path> shortestPaths(qsizetype source, const std::vector<qsizetype> &duts, int without) = 0;
    /// The one that comes first, which is known to have so many switches.
    virtual Path firstPath(qsizetype source, qsizetype dut, int switches) = 0;
    /// Whether one between any two pins crosses the component.
    virtual bool isOnAnyPath(int component) = 0;
};
}

#endif
