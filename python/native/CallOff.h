#ifndef VELK_PYTHON_CALLOFF_H
#define VELK_PYTHON_CALLOFF_H

#include <velk/facade/VelkSystem.h>

#include <pybind11/pybind11.h>

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>

namespace VelkPython {

namespace py = pybind11;

/// Has a search that runs without the interpreter lock end when Python wants it to: at Ctrl-C, or when a function that
/// is told of its progress raises something.
class CallOff
{
public:
    /// \a progress is None, or called with what is done and with all.
    explicit CallOff(py::object progress = py::none());

    /// For the search to ask.
    std::function<bool()> question();
    /// For the search to tell; none where nobody wants to know.
    std::function<void(std::size_t done, std::size_t all)> progress();
    /// Raises in Python what ended the search, if anything did. Whoever calls it holds the lock.
    void raise() const;

private:
    bool isWanted();
    void tell(std::size_t done, std::size_t all);

    const py::object progressFunction;
    std::chrono::steady_clock::time_point nextLook;
    std::optional<py::error_already_set> error;
};

/// What \a work returns, while other threads of Python go on.
template <typename Work>
auto withoutLock(const Work &work)
{
    const py::gil_scoped_release released;
    return work();
}

/// The same for a search that asks \a callOff.
template <typename Search>
auto searched(const CallOff &callOff, const Search &search)
try {
    auto found = withoutLock(search);
    callOff.raise();
    return found;
} catch (const Velk::VelkSystemException &) {
    callOff.raise();
    throw;
}
}

#endif
