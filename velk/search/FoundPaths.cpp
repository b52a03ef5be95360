#include <velk/search/FoundPaths.h>

#include <utility>

namespace Velk {

QList<RoutingPath> FoundPaths::take(const NetlistIndex &index)
{
    std::size_t count = 0;
    for (const auto &[key, group] : groups)
        count += group.additionalNodes.size();
    QList<RoutingPath> paths;
    paths.reserve(static_cast<qsizetype>(count));
    for (auto &[key, group] : groups) {
        const auto length = key.first;
        auto component = group.components.cbegin();
        for (auto &nodes : group.additionalNodes) {
            RoutingPath path;
            path.switchingComponents.reserve(length);
            for (const auto end = component + length; component != end; ++component)
                path.switchingComponents.append(index.component(*component));
            path.additionalNodes = std::move(nodes);
            paths.append(std::move(path));
        }
    }
    groups.clear();
    return paths;
}
}
