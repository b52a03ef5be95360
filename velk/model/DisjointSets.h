#ifndef VELK_MODEL_DISJOINTSETS_H
#define VELK_MODEL_DISJOINTSETS_H

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <utility>
#include <vector>

namespace Velk {

/// Numbers in sets that can be united, each alone at first.
class DisjointSets
{
public:
    explicit DisjointSets(int count)
        : parents(static_cast<std::size_t>(count))
    {
        std::iota(parents.begin(), parents.end(), 0);
    }

    /// The least number of the set.
    int leastOf(int number)
    {
        while (parentOf(number) != number) {
            parentOf(number) = parentOf(parentOf(number)); // shorter ways for the next ones
            number = parentOf(number);
        }
        return number;
    }

    void unite(int number, int other)
    {
        const auto [least, greater] = std::minmax({leastOf(number), leastOf(other)});
        parentOf(greater) = least;
    }

    bool areUnited(int number, int other) { return leastOf(number) == leastOf(other); }

private:
    int &parentOf(int number) { return parents[static_cast<std::size_t>(number)]; }

    std::vector<int> parents;
};
}

#endif
