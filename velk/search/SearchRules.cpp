#include <velk/search/SearchRules.h>

namespace Velk {

namespace {

int terminalOf(const EDANetNode &node, const NetlistIndex &index)
{
    return index.numberedNode(node.ref, node.pin).terminal;
}
}

SearchRules::SearchRules(const RoutingRules &rules, const NetlistIndex &index, const EDANetNode &source,
                         const EDANetNode &destination)
    : ends{terminalOf(source, index), terminalOf(destination, index)}
    , maxNetsSearched(rules.maxNetsSearched())
    , maxAdditionalNodes(rules.maxAdditionalNodes)
    , maxPaths(rules.maxPaths)
{
    const auto &types = index.componentTypes();
    roles.reserve(static_cast<std::size_t>(types.size()));
    for (const QString &type : types)
        roles.push_back(rules.roleOf(type));
    roles[NetlistIndex::unlisted] = {false, false};
}
}
