#include "python/native/CallOff.h"

#include <utility>

namespace VelkPython {

namespace {

// People take a tenth of a second for at once. Taking the lock more often would slow down other threads.
constexpr std::chrono::milliseconds lookInterval{20};
}

CallOff::CallOff(py::object progress)
    : progressFunction(std::move(progress))
    , nextLook(std::chrono::steady_clock::now() + lookInterval)
{
}

std::function<bool()> CallOff::question()
{
    return [this] { return isWanted(); };
}

std::function<void(std::size_t done, std::size_t all)> CallOff::progress()
{
    if (progressFunction.is_none())
        return {};
    return [this](std::size_t done, std::size_t all) { tell(done, all); };
}

void CallOff::raise() const
{
    if (error)
        throw py::error_already_set(*error);
}

bool CallOff::isWanted()
{
    if (error)
        return true;
    const auto now = std::chrono::steady_clock::now();
    if (now < nextLook)
        return false;
    nextLook = now + lookInterval;
    const py::gil_scoped_acquire locked;
    if (PyErr_CheckSignals() != 0)
        error.emplace();
    return error.has_value();
}

void CallOff::tell(std::size_t done, std::size_t all)
{
    const py::gil_scoped_acquire locked;
    try {
        progressFunction(done, all);
    } catch (py::error_already_set &raised) {
        error.emplace(raised);
    }
}
}
