#ifndef VELK_PYTHON_VALUES_H
#define VELK_PYTHON_VALUES_H

#include "python/native/Records.h"

#include <unordered_map>

namespace VelkPython {

namespace py = pybind11;

/// Makes the values of velk._values of the records of a system. Components, their pins and the names of nets are made
/// once and shared by all values. Whoever calls it holds the interpreter lock.
class Values
{
public:
    explicit Values(const Velk::VelkSystem &describedSystem);

    py::object of(bool value) const { return py::bool_(value); }
    py::object of(int value) const { return py::int_(value); }
    py::object of(std::size_t value) const { return py::int_(value); }
    py::object of(const std::string &text) const { return py::str(text); }
    py::object of(Velk::VelkPositionsRule rule) const;
    py::object of(const Velk::VelkComponentInfo &component);
    py::object of(const Velk::VelkNodeInfo &pin);
    py::object of(const Velk::VelkNetInfo &net);
    py::object of(const Velk::VelkCoverage &coverage);

    /// None, or what it holds.
    template <typename T>
    py::object of(const std::optional<T> &value)
    {
        return value ? of(*value) : py::none();
    }
    template <typename A, typename B>
    py::object of(const std::pair<A, B> &pair)
    {
        return py::make_tuple(of(pair.first), of(pair.second));
    }
    template <typename T>
    py::object of(const std::vector<T> &list)
    {
        return tupleOf(list, [this](const T &value) { return of(value); });
    }
    template <typename T>
    py::object of(const std::map<std::string, T> &map)
    {
        py::dict members;
        for (const auto &[key, value] : map)
            members[py::str(key)] = of(value);
        return frozenDict(members);
    }
    /// A record whose fields Record<T> tells.
    template <typename T, typename = decltype(Record<T>::fields)>
    py::object of(const T &record)
    {
        return std::apply([&](auto... fields) { return make(typeOf<T>(), of(record.*fields)...); }, Record<T>::fields);
    }

    py::object pinsOf(const std::string &ref);
    py::object routes(const Velk::VelkNodeInfo &start, const Velk::VelkNodeInfo &end,
                      const std::vector<Velk::VelkRoute> &routes);
    py::object reason(const Velk::VelkNodeInfo &start, const Velk::VelkNodeInfo &end,
                      const Velk::VelkNoRouteReason &reason);
    /// \a ends are those of the connections that were asked for.
    py::object plan(const std::vector<std::pair<Velk::VelkNodeInfo, Velk::VelkNodeInfo>> &ends,
                    const Velk::VelkPlannedStep &step);

private:
    /// A pin as the part of its component lists it, on the first net that holds it.
    struct PlacedPin
    {
        std::string number;
        std::string name;
        std::string net;
        py::object pin;
        py::object netName; ///< or None
    };

    /// What a reference stands for.
    struct KnownComponent
    {
        py::object component; ///< none where the netlist lists none
        std::vector<PlacedPin> pins = {};
        std::vector<std::size_t> pinsByNumber = {}; ///< their places
        bool hasPins = false;                       ///< whether they have been asked for

        void setPins(std::vector<PlacedPin> &&placed);
        const PlacedPin *find(const Velk::VelkPinInfo &pin) const;
    };

    template <typename T, typename ValueOf>
    py::tuple tupleOf(const std::vector<T> &list, const ValueOf &valueOf)
    {
        py::tuple tuple(list.size());
        if (list.empty())
            return tuple;
        PyObject_GC_UnTrack(tuple.ptr()); // else other threads may see it before it is full
        Py_ssize_t place = 0;
        for (const T &value : list)
            PyTuple_SET_ITEM(tuple.ptr(), place++, valueOf(value).release().ptr());
        PyObject_GC_Track(tuple.ptr());
        return tuple;
    }
    /// What the constructor of a NamedTuple makes, without its cost.
    template <typename... Fields>
    static py::object make(const py::object &type, Fields &&...fields)
    {
        auto *const typeObject = reinterpret_cast<PyTypeObject *>(type.ptr());
        auto tuple = py::reinterpret_steal<py::object>(typeObject->tp_alloc(typeObject, sizeof...(Fields)));
        if (!tuple)
            throw py::error_already_set();
#if PY_VERSION_HEX >= 0x030e0000
        reinterpret_cast<PyTupleObject *>(tuple.ptr())->ob_hash = -1; // not yet known
#endif
        Py_ssize_t place = 0;
        (PyTuple_SET_ITEM(tuple.ptr(), place++, py::object(std::forward<Fields>(fields)).release().ptr()), ...);
        return tuple;
    }

    /// The NamedTuple that a record becomes.
    template <typename T>
    py::object typeOf() const
    {
        return types.attr(Record<T>::name.text);
    }
    py::object newPin(const std::string &ref, const Velk::VelkPinInfo &pin, const py::object &net) const;
    const KnownComponent &known(const std::string &ref);
    /// A pin and the name of the net that it was met on.
    struct MetPin
    {
        py::object pin;
        py::object net;
    };
    MetPin metPin(const std::string &ref, const KnownComponent &component, const Velk::VelkPinInfo &pin,
                  const std::string &net);
    py::object netName(const std::string &name);
    py::object components(const std::vector<std::string> &refs);
    std::map<std::string, std::string> restNames(const std::vector<std::string> &relays) const;
    py::object step(const Velk::VelkRouteStep &step, const std::string &nextNet);
    /// The steps of a route that was made, which the next one mostly begins with. None at first.
    struct MadeSteps
    {
        const Velk::VelkRoute *route = nullptr;
        py::tuple steps = py::tuple();
    };
    py::tuple steps(const Velk::VelkRoute &route, const MadeSteps &before);
    py::object route(const py::object &start, const py::object &end, const Velk::VelkRoute &route,
                     const py::tuple &steps);

    Velk::VelkSystem system;
    py::module_ types; ///< velk._values
    py::object frozenDict;
    py::object pinType;
    py::object stepType;
    py::object routeType;
    std::unordered_map<std::string, KnownComponent> knownComponents; ///< by reference
    std::unordered_map<std::string, py::object> netNames;
};
}

#endif
