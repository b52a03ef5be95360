#ifndef VELKPLANNING_PLACES_H
#define VELKPLANNING_PLACES_H

#include <cstddef>

namespace Velk {

/// Where in a vector the thing of this number stands.
inline std::size_t placeOf(int number)
{
    return static_cast<std::size_t>(number);
}
}

#endif
