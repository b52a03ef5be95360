#ifndef VELK_SEARCH_FOUNDPATHS_H
#define VELK_SEARCH_FOUNDPATHS_H

#include <QtGlobal>

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

    /// Keeps additional nodes for paths to come and tells their place.
    template <typename Nodes>
    std::size_t keepNodes(const Nodes &additionalNodes)
    {
        const std::size_t place = nodes.size();
        for (const NodeOnNet &node : additionalNodes) // a few, where copying them as a block takes longer
            nodes.push_back(node);
        return place;
    }

    /// A path over the \a component of each step, by its \a crossing, to this net, with the additional nodes at this
    /// place.
    template <typename Steps>
    void add(const Steps &steps, int lastNet, std::size_t nodesPlace, std::size_t nodeCount)
    {
        Group &group = groupOf(static_cast<std::size_t>(steps.size()), nodeCount);
        for (const auto &step : steps)
            group.components.push_back(step.component);
        group.nodesPlaces.push_back(nodesPlace);
        if (keepsCrossings) {
            for (const auto &step : steps)
                group.crossings.push_back(step.crossing);
            group.lastNets.push_back(lastNet);
        }
        ++pathCount;
    }

    /// The position of the next component of the path that was added last; to be called for all of them, or for none of
    /// any path.
    void addPosition(int position) { latest->second.positions.push_back(position); }

    /// Counts a path of which nothing is kept.
    void addUnkept() { ++pathCount; }

    qsizetype count() const { return pathCount; }

    /// Calls \a visit with each path.
    template <typename Visit>
    void visitAll(Visit visit) const
    {
        for (const auto &[key, group] : groups) {
            const auto &[length, nodeCount] = key;
            for (std::size_t i = 0; i < group.nodesPlaces.size(); ++i) {
                visit(FoundPath{group.components.data() + i * length, static_cast<qsizetype>(length),
                                nodes.data() + group.nodesPlaces[i], static_cast<qsizetype>(nodeCount),
                                keepsCrossings ? group.crossings.data() + i * length : nullptr,
                                keepsCrossings ? group.lastNets[i] : 0,
                                group.positions.empty() ? nullptr : group.positions.data() + i * length});
            }
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
        nodes.clear();
        for (auto &[key, group] : groups)
            group.clear();
    }

private:
    struct Group
    {
        std::vector<int> components;          ///< those of one path after those of another
        std::vector<std::size_t> nodesPlaces; ///< of each path
        std::vector<Crossing> crossings;      ///< one for each component, where they are kept
        std::vector<int> lastNets;            ///< of each path, where crossings are kept
        std::vector<int> positions;           ///< one for each component, where they are kept

        void clear()
        {
            components.clear();
            nodesPlaces.clear();
            crossings.clear();
            lastNets.clear();
            positions.clear();
        }
    };

    using Groups = std::map<std::pair<std::size_t, std::size_t>, Group>; ///< by the numbers of components and nodes

    Group &groupOf(std::size_t length, std::size_t nodeCount)
    {
        const std::pair key(length, nodeCount);
        if (!latest || latest->first != key)
            latest = &*groups.try_emplace(key).first;
        return latest->second;
    }

    bool isLarge() const
    {
        constexpr std::size_t fewNumbers = 1000;
        std::size_t numbers = nodes.size() + groups.size();
        for (const auto &[key, group] : groups)
            numbers += group.components.size() + group.nodesPlaces.size();
        return numbers > fewNumbers;
    }

    bool keepsCrossings = false;
    Groups groups;
    Groups::value_type *latest = nullptr; ///< the group that got the last path
    std::vector<NodeOnNet> nodes;         ///< those of one path after those of another
    qsizetype pathCount = 0;
};
}

#endif
