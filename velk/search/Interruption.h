#ifndef VELK_SEARCH_INTERRUPTION_H
#define VELK_SEARCH_INTERRUPTION_H

#include <velk/model/EDAException.h>

#include <cstddef>
#include <functional>
#include <limits>

namespace Velk {

/// Lets a caller call a search off, by a function that tells whether to.
class Interruption
{
public:
    /// The function may be empty, and has to stay.
    explicit Interruption(const std::function<bool()> &isCalledOffFunction)
        : isCalledOff(isCalledOffFunction)
        , left(isCalledOff ? 0 : std::numeric_limits<std::size_t>::max()) // so that every search asks
    {
    }

    /// To be called with the number of nodes and pins that are looked at. Asks now and then. Throws
    /// EDASearchCalledOffException.
    void work(std::size_t amount)
    {
        if (amount < left) {
            left -= amount;
            return;
        }
        left = workBetween;
        ask();
    }
    /// Asks at once. Throws the same.
    void ask() const
    {
        if (isCalledOff && isCalledOff())
            throw EDASearchCalledOffException();
    }

private:
    static constexpr std::size_t workBetween = 20'000; ///< takes less than a millisecond

    const std::function<bool()> &isCalledOff;
    std::size_t left;
};
}

#endif
