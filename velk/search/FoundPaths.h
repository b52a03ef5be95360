#ifndef VELK_SEARCH_FOUNDPATHS_H
#define VELK_SEARCH_FOUNDPATHS_H

#include <velk/index/NetlistIndex.h>

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
};

/// Paths in numbers, kept in the order of results: in groups of as many switching components and additional nodes,
/// within a group in the order in which they were found.
class FoundPaths
{
public:
    explicit FoundPaths(bool withCrossings)
        : keepsCrossings(withCrossings)
    {
    }

    /// Keeps additional nodes for paths to come and tells their place.
    std::size_t keepNodes(const std::vector<NodeOnNet> &additionalNodes)
    {
        const std::size_t place = nodes.size();
        nodes.insert(nodes.end(), additionalNodes.begin(), additionalNodes.end());
        return place;
    }

    /// A path over the \a component of each step, by its \a crossing, to this net, with the additional nodes at this
    /// place.
    template <typename Step>
    void add(const std::vector<Step> &steps, int lastNet, std::size_t nodesPlace, std::size_t nodeCount)
    {
        Group &group = groupOf(steps.size(), nodeCount);
        for (const Step &step : steps)
            group.components.push_back(step.component);
        group.nodesPlaces.push_back(nodesPlace);
        if (keepsCrossings) {
            for (const Step &step : steps)
                group.crossings.push_back(step.crossing);
            group.lastNets.push_back(lastNet);
        }
    }

    qsizetype count() const
    {
        std::size_t count = 0;
        for (const auto &[key, group] : groups)
            count += group.nodesPlaces.size();
        return static_cast<qsizetype>(count);
    }

    /// Calls \a visit with each path.
    template <typename Visit>
    void visitAll(Visit visit) const
    {
        for (const auto &[key, group] : groups) {
            const auto &[length, nodeCount] = key;
            for (std::size_t i = 0; i < group.nodesPlaces.size(); ++i) {
                FoundPath path{group.components.data() + i * length,
                               static_cast<qsizetype>(length),
                               nodes.data() + group.nodesPlaces[i],
                               static_cast<qsizetype>(nodeCount),
                               nullptr,
                               NetlistIndex::none};
                if (keepsCrossings) {
                    path.crossings = group.crossings.data() + i * length;
                    path.lastNet = group.lastNets[i];
                }
                visit(path);
            }
        }
    }

private:
    struct Group
    {
        std::vector<int> components;          ///< those of one path after those of another
        std::vector<std::size_t> nodesPlaces; ///< of each path
        std::vector<Crossing> crossings;      ///< one for each component, where they are kept
        std::vector<int> lastNets;            ///< of each path, where crossings are kept
    };

    Group &groupOf(std::size_t length, std::size_t nodeCount)
    {
        const std::pair key(length, nodeCount);
        if (!latest || latest->first != key)
            latest = &*groups.try_emplace(key).first;
        return latest->second;
    }

    using Groups = std::map<std::pair<std::size_t, std::size_t>, Group>; ///< by the numbers of components and nodes

    const bool keepsCrossings;
    Groups groups;
    Groups::value_type *latest = nullptr; ///< the group that got the last path
    std::vector<NodeOnNet> nodes;         ///< those of one path after those of another
};
}

#endif
