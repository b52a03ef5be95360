#ifndef VELK_SEARCH_FOUNDPATHS_H
#define VELK_SEARCH_FOUNDPATHS_H

#include <QtGlobal>

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

namespace Velk {

/// A node in the numbers of an index.
struct NodeOnNet
{
    int net;
    int node;
};

/// By which way a path crosses a component, in the numbers of an index.
struct Crossing
{
    int net;
    int node; ///< of the net, by which the component is entered
    int exit; ///< terminal of the component, by which it is left
};

/// A path in numbers; it points into the FoundPaths that it is of.
struct FoundPath
{
    const int *components; ///< the first of them
    qsizetype length;
    const NodeOnNet *additionalNodes; ///< the first of them; paths that have the same ones may share them
    qsizetype nodeCount;
    const Crossing *crossings; ///< the first of them, one for each component, where they are kept
    int lastNet;               ///< where crossings are kept
    const int *positions;      ///< the first of them, one for each component; null where they are not kept
};

/// Paths in numbers, kept in the order of results: in groups of as many switching components and additional nodes,
/// within a group in the order in which they were found.
class FoundPaths
{
public:
    /// Whether to keep by which ways paths go, to be told before the first one.
    void setKeepsCrossings(bool isOn) { keepsCrossings = isOn; }

    /// Keeps additional nodes for paths to come and returns the first of them.
    template <typename Nodes>
    const NodeOnNet *keepNodes(const Nodes &additionalNodes)
    {
        NodeBlock &block = blockFor(static_cast<std::size_t>(additionalNodes.size()));
        const NodeOnNet *const first = block.data() + block.size();
        for (const NodeOnNet &node : additionalNodes) // a few, where copying them as a block takes longer
            block.push_back(node);
        return first;
    }

    /// A path over the \a component of each step, by its \a crossing, to this net, with additional nodes that are kept.
    template <typename Steps>
    void add(const Steps &steps, int lastNet, const NodeOnNet *additionalNodes, std::size_t nodeCount)
    {
        PathBlock &block = blockOf(static_cast<std::size_t>(steps.size()), nodeCount);
        for (const auto &step : steps)
            block.components.push_back(step.component);
        block.nodes.push_back(additionalNodes);
        if (keepsCrossings) {
            for (const auto &step : steps)
                block.crossings.push_back(step.crossing);
            block.lastNets.push_back(lastNet);
        }
        ++pathCount;
    }

    /// The position of the next component of the path that was added last; to be called for all of them, or for none of
    /// any path.
    void addPosition(int position) { latest->second.back().positions.push_back(position); }

    /// Counts a path of which nothing is kept.
    void addUnkept() { ++pathCount; }

    qsizetype count() const { return pathCount; }

    /// Calls \a visit with each path.
    template <typename Visit>
    void visitAll(Visit visit) const
    {
        for (const auto &[key, blocks] : groups) {
            for (const PathBlock &block : blocks)
                visitBlock(block, key.first, static_cast<qsizetype>(key.second), visit);
        }
    }

    /// Forgets all paths. Keeps the memory, if they are few, for those of the next query.
    void clear()
    {
        if (isLarge()) {
            *this = FoundPaths();
            return;
        }
        pathCount = 0;
        for (NodeBlock &block : nodeBlocks)
            block.clear();
        for (auto &[key, blocks] : groups) {
            for (PathBlock &block : blocks)
                block.clear();
        }
    }

private:
    /// Some of the paths of a group. A group is many of them, since one list of all would be copied as it grows, which
    /// takes so long for very many paths that nobody could call the search off.
    struct PathBlock
    {
        std::vector<int> components;          ///< those of one path after those of another
        std::vector<const NodeOnNet *> nodes; ///< the first of each path
        std::vector<Crossing> crossings;      ///< one for each component, where they are kept
        std::vector<int> lastNets;            ///< of each path, where crossings are kept
        std::vector<int> positions;           ///< one for each component, where they are kept

        void clear()
        {
            components.clear();
            nodes.clear();
            crossings.clear();
            lastNets.clear();
            positions.clear();
        }
    };

    using NodeBlock = std::vector<NodeOnNet>; ///< does not grow beyond its capacity, so that its nodes stay
    /// By the numbers of components and nodes.
    using Groups = std::map<std::pair<std::size_t, std::size_t>, std::vector<PathBlock>>;

    static constexpr std::size_t pathsInBlock = 4096;
    static constexpr std::size_t nodesInBlock = 1024;

    template <typename Visit>
    void visitBlock(const PathBlock &block, std::size_t length, qsizetype nodeCount, Visit &visit) const
    {
        for (std::size_t i = 0; i < block.nodes.size(); ++i) {
            visit(FoundPath{block.components.data() + i * length, static_cast<qsizetype>(length), block.nodes[i],
                            nodeCount, keepsCrossings ? block.crossings.data() + i * length : nullptr,
                            keepsCrossings ? block.lastNets[i] : 0,
                            block.positions.empty() ? nullptr : block.positions.data() + i * length});
        }
    }

    PathBlock &blockOf(std::size_t length, std::size_t nodeCount)
    {
        const std::pair key(length, nodeCount);
        if (!latest || latest->first != key)
            latest = &*groups.try_emplace(key).first;
        std::vector<PathBlock> &blocks = latest->second;
        if (blocks.empty() || blocks.back().nodes.size() == pathsInBlock)
            blocks.emplace_back();
        return blocks.back();
    }

    NodeBlock &blockFor(std::size_t nodeCount)
    {
        if (nodeBlocks.empty() || nodeBlocks.back().capacity() - nodeBlocks.back().size() < nodeCount)
            nodeBlocks.emplace_back().reserve(std::max(nodesInBlock, nodeCount));
        return nodeBlocks.back();
    }

    bool isLarge() const
    {
        constexpr std::size_t fewPaths = 200;
        return static_cast<std::size_t>(pathCount) > fewPaths || groups.size() > fewPaths || nodeBlocks.size() > 1;
    }

    bool keepsCrossings = false;
    Groups groups;
    Groups::value_type *latest = nullptr; ///< the group that got the last path
    std::vector<NodeBlock> nodeBlocks;
    qsizetype pathCount = 0;
};
}

#endif
