#ifndef VELK_INDEX_CROSSINGGRAPHS_H
#define VELK_INDEX_CROSSINGGRAPHS_H

#include <velk/index/CrossingGraph.h>

#include <memory>
#include <mutex>
#include <vector>

namespace Velk {

/// The crossing graphs of a netlist: for the usual roles, with relays as they are drawn, one that is made with it, for
/// others the last few that were asked for.
class CrossingGraphs
{
public:
    /// To be called before any thread asks. Without it, the graph is made as others are.
    void makeUsual(const NetlistIndex &index);
    /// Made here if it is not there. Safe for threads.
    std::shared_ptr<const CrossingGraph> graphFor(const ComponentRoles &roles,
                                                  const QSharedPointer<const RelayContactMap> &relayContacts,
                                                  const NetlistIndex &index) const;

private:
    std::shared_ptr<const CrossingGraph> usual; ///< so that most queries need no lock
    mutable std::mutex mutex;
    mutable std::vector<std::shared_ptr<const CrossingGraph>> others; ///< the one that was asked for last is the last
};
}

#endif
