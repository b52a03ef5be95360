#ifndef VELK_SEARCH_REQUIREDCROSSINGS_H
#define VELK_SEARCH_REQUIREDCROSSINGS_H

#include <velk/index/CrossingGraph.h>
#include <velk/search/Interruption.h>
#include <velk/search/Marks.h>
#include <velk/search/SearchRules.h>

#include <vector>

namespace Velk {

/// The components that each path has to cross: which of them a branch still lacks, and what it takes at least to get
/// over these to the destination.
class RequiredCrossings
{
public:
    /// Looks, for each of the first few, at the surroundings of the destination. All have to stay.
    RequiredCrossings(const NetlistIndex &index, const CrossingGraph &graph, const SearchRules &searchRules,
                      Interruption &interruption);

    /// Tells that the branch crosses a component, or no longer does.
    void add(int component);
    void remove(int component);

    bool areComplete() const { return missing == 0; }
    /// How many switches at least lead from this net to the destination over all that are missing; Marks::unmarked if
    /// the destination is too far so.
    int switchesFrom(int net) const;

private:
    /// How often the branch crosses it, or null for a component that is not required.
    int *crossingsOf(int component);

    const std::vector<int> &components; ///< ascending
    std::vector<int> crossings;         ///< of each
    std::vector<Marks> switchesOver;    ///< of each of the first ones, by nets
    int missing;
};
}

#endif
