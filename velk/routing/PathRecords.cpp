#include <velk/routing/PathRecords.h>

#include <velk/search/HeldPositions.h>

namespace Velk {

namespace {

static_assert(HeldPositions::noPosition == TracedStep::asDrawn);

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

template <>
QList<RoutingPath> pathsOf(const FoundPaths &found, const NetlistIndex &index, Interruption &interruption)
{
    const auto nodeOf = [&index](const NodeOnNet &place) { return index.node(place.net, place.node); };
    NodeLists<QSharedPointer<EDANetNode>, decltype(nodeOf)> nodeLists(nodeOf);
    QList<RoutingPath> paths;
    paths.reserve(found.count());
    found.visitAll([&](const FoundPath &foundPath) {
        interruption.work(static_cast<std::size_t>(foundPath.length));
        RoutingPath &path = paths.emplaceBack();
        path.switchingComponents.reserve(foundPath.length);
        for (const int *component = foundPath.components; component != foundPath.components + foundPath.length;
             ++component)
            path.switchingComponents.append(index.component(*component));
        path.additionalNodes = nodeLists.of(foundPath);
    });
    return paths;
}

template <>
QList<TracedPath> pathsOf(const FoundPaths &found, const NetlistIndex &index, Interruption &interruption)
{
    const auto nodeOf = [&index](const NodeOnNet &place) {
        return TracedNode{index.node(place.net, place.node), index.net(place.net)};
    };
    NodeLists<TracedNode, decltype(nodeOf)> nodeLists(nodeOf);
    QList<TracedPath> paths;
    paths.reserve(found.count());
    found.visitAll([&](const FoundPath &foundPath) {
        interruption.work(static_cast<std::size_t>(foundPath.length));
        TracedPath &path = paths.emplaceBack();
        path.steps.reserve(foundPath.length);
        for (qsizetype i = 0; i < foundPath.length; ++i) {
            const int component = foundPath.components[i];
            const Crossing &crossing = foundPath.crossings[i];
            path.steps.append({index.net(crossing.net), index.node(crossing.net, crossing.node)->pin,
                               index.component(component), index.pinNumber(component, crossing.exit),
                               foundPath.positions ? foundPath.positions[i] : TracedStep::asDrawn});
        }
        path.lastNet = index.net(foundPath.lastNet);
        path.additionalNodes = nodeLists.of(foundPath);
    });
    return paths;
}
}
