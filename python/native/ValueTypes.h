#ifndef VELK_PYTHON_VALUETYPES_H
#define VELK_PYTHON_VALUETYPES_H

#include "python/native/Records.h"

namespace VelkPython {

/// How type hints name what a type of the library becomes.
template <typename T>
struct ValueType
{
    static constexpr auto name = const_name("velk._values.") + Record<T>::name;
};

template <typename T>
struct ValueType<std::vector<T>>
{
    static constexpr auto name = const_name("typing.Tuple[") + ValueType<T>::name + const_name(", ...]");
};

/// What a function returns to Python, for its signature to say so.
template <typename T>
class Value : public pybind11::object
{
public:
    explicit Value(pybind11::object &&made)
        : pybind11::object(std::move(made))
    {
    }
};
}

template <typename T>
struct pybind11::detail::handle_type_name<VelkPython::Value<T>>
{
    static constexpr auto name = VelkPython::ValueType<T>::name;
};

#endif
