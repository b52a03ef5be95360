#include <velk/index/CrossingGraphs.h>

#include <algorithm>

namespace Velk {

namespace {

constexpr std::size_t mostOthers = 4;
}

void CrossingGraphs::makeUsual(const NetlistIndex &index)
{
    usual = std::make_shared<const CrossingGraph>(index, ComponentRoles::usual(), nullptr);
}

std::shared_ptr<const CrossingGraph>
CrossingGraphs::graphFor(const ComponentRoles &roles, const QSharedPointer<const RelayContactMap> &relayContacts,
                         const NetlistIndex &index) const
{
    if (usual && usual->isFor(roles, relayContacts))
        return usual;
    const std::lock_guard lock(mutex);
    const auto isWanted = [&](const auto &graph) { return graph->isFor(roles, relayContacts); };
    const auto found = std::find_if(others.begin(), others.end(), isWanted);
    if (found != others.end()) {
        std::rotate(found, found + 1, others.end());
        return others.back();
    }
    others.push_back(std::make_shared<const CrossingGraph>(index, roles, relayContacts));
    if (others.size() > mostOthers)
        others.erase(others.begin());
    return others.back();
}
}
