#include <velk/routing/PathRecords.h>

namespace Velk {

namespace {

/// A list of the additional nodes of each path, one for paths that share them, which follow one another.
template <typename Node, typename MakeNode>
class NodeLists
{
public:
    explicit NodeLists(MakeNode makeNode)
        : make(makeNode)
    {
    }

    const QList<Node> &of(const FoundPath &path)
    {
        if (path.additionalNodes == listed && path.nodeCount == list.size())
            return list;
        list = QList<Node>();
        list.reserve(path.nodeCount);
        for (const NodeOnNet *node = path.additionalNodes; node != path.additionalNodes + path.nodeCount; ++node)
            list.append(make(*node));
        listed = path.additionalNodes;
        return list;
    }

private:
    MakeNode make;
    const NodeOnNet *listed = nullptr;
    QList<Node> list;
};
}

QList<RoutingPath> routingPathsOf(const FoundPaths &found, const NetlistIndex &index)
{
    const auto nodeOf = [&index](const NodeOnNet &place) { return index.node(place.net, place.node); };
    NodeLists<QSharedPointer<EDANetNode>, decltype(nodeOf)> nodeLists(nodeOf);
    QList<RoutingPath> paths;
    paths.reserve(found.count());
    found.visitAll([&](const FoundPath &foundPath) {
        RoutingPath path;
        path.switchingComponents.reserve(foundPath.length);
        for (const int *component = foundPath.components; component != foundPath.components + foundPath.length;
             ++component)
            path.switchingComponents.append(index.component(*component));
        path.additionalNodes = nodeLists.of(foundPath);
        paths.append(std::move(path));
    });
    return paths;
}
}
