#ifndef VELK_SEARCH_MARKS_H
#define VELK_SEARCH_MARKS_H

#include <cstddef>
#include <limits>
#include <vector>

namespace Velk {

/// Numbers noted for some of many nets or junctions, all forgotten at once. A query touches few of them, so a new table
/// for each query would cost more than the search.
class Marks
{
public:
    /// What those without a mark have, larger than any that is noted.
    static constexpr int unmarked = std::numeric_limits<int>::max();

    /// Forgets everything, also what a query has left that threw; afterwards numbers below \a size can be marked.
    void clear(int size)
    {
        for (const int number : marked)
            values[toSize(number)] = unmarked;
        marked.clear();
        if (values.size() < toSize(size))
            values.resize(toSize(size), unmarked);
    }
    bool has(int number) const { return value(number) != unmarked; }
    int value(int number) const { return values[toSize(number)]; }
    void set(int number, int value)
    {
        if (!has(number))
            marked.push_back(number);
        values[toSize(number)] = value;
    }

    /// Those with a mark, in the order in which they got it.
    const std::vector<int> &all() const { return marked; }

private:
    static std::size_t toSize(int number) { return static_cast<std::size_t>(number); }

    std::vector<int> values;
    std::vector<int> marked;
};
}

#endif
