#ifndef VELK_SEARCH_FOUNDPATHS_H
#define VELK_SEARCH_FOUNDPATHS_H

#include <velk/index/NetlistIndex.h>
#include <velk/routing/RoutingPath.h>

#include <map>
#include <utility>
#include <vector>

namespace Velk {

/// Paths in numbers, kept in the order of results until all are known: in groups of as many switching components and
/// additional nodes, within a group in the order in which they were found.
class FoundPaths
{
public:
    /// A path over the \a component of each step.
    template <typename Step>
    void add(const std::vector<Step> &steps, const QList<QSharedPointer<EDANetNode>> &nodes)
    {
        Group &group = groups[{static_cast<qsizetype>(steps.size()), nodes.size()}];
        for (const Step &step : steps)
            group.components.push_back(step.component);
        group.additionalNodes.push_back(nodes);
    }

    /// Empties this.
    QList<RoutingPath> take(const NetlistIndex &index);

private:
    struct Group
    {
        std::vector<int> components;                                    ///< those of one path after those of another
        std::vector<QList<QSharedPointer<EDANetNode>>> additionalNodes; ///< of each path
    };

    std::map<std::pair<qsizetype, qsizetype>, Group> groups; ///< by the numbers of components and of additional nodes
};
}

#endif
