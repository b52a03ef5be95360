#ifndef VELK_INDEX_ELEMENTS_H
#define VELK_INDEX_ELEMENTS_H

#include <cstddef>

namespace Velk {

/// Elements that follow one another in memory.
template <typename Element>
struct Elements
{
    const Element *first;
    const Element *last; ///< behind them

    const Element *begin() const { return first; }
    const Element *end() const { return last; }
    std::size_t size() const { return static_cast<std::size_t>(last - first); }
};
}

#endif
