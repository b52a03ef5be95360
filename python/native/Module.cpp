#include "python/native/CallOff.h"
#include "python/native/System.h"

#include <pybind11/stl.h>

using namespace Velk;
using namespace VelkPython;

namespace {

/// The class of velk._errors for what failed.
const char *errorName(VelkSystemException::Kind kind)
{
    switch (kind) {
    case VelkSystemException::Kind::Reading:
        return "ReadingError";
    case VelkSystemException::Kind::NotFound:
        return "NotFoundError";
    case VelkSystemException::Kind::Writing:
        return "WritingError";
    case VelkSystemException::Kind::TooLarge:
        return "TooLargeError";
    case VelkSystemException::Kind::Positions:
        return "PositionsError";
    case VelkSystemException::Kind::Plan:
        return "PlanError";
    case VelkSystemException::Kind::CalledOff: // which only CallOff does, that raises what it was for
        break;
    }
    return "Error";
}

void raiseErrors()
{
    // NOLINTNEXTLINE(performance-unnecessary-value-param): pybind11 wants it so
    py::register_local_exception_translator([](std::exception_ptr thrown) {
        try {
            if (thrown)
                std::rethrow_exception(thrown);
        } catch (const VelkSystemException &exception) {
            const py::object type = py::module_::import("velk._errors").attr(errorName(exception.kind()));
            PyErr_SetObject(type.ptr(), py::str(exception.message()).ptr());
        }
    });
}

void addEnd(py::module_ &module)
{
    py::class_<VelkRouteEnd>(module, "End", "A pin of a component, as people write it.")
        .def(py::init([](const Properties &properties, const std::string &pin, const std::string &ref) {
                 return VelkRouteEnd{properties, pin, ref};
             }),
             py::arg("properties"), py::arg("pin"), py::arg("ref"));
}

void addSystemOptions(py::module_ &module)
{
    const auto setTolerant = [](VelkSystemOptions &options, bool isTolerant) {
        options.readingMode = isTolerant ? VelkReadingMode::Tolerant : VelkReadingMode::Default;
    };
    py::class_<VelkSystemOptions>(module, "SystemOptions", "How a system is read.")
        .def(py::init())
        .def_readwrite("connector", &VelkSystemOptions::connectorTypes)
        .def_readwrite("switchable", &VelkSystemOptions::switchableTypes)
        .def_readwrite("interface", &VelkSystemOptions::interfaceTypes)
        .def_readwrite("passive", &VelkSystemOptions::passiveTypes)
        .def_readwrite("dut_type", &VelkSystemOptions::dutTypes)
        .def_readwrite("device_type", &VelkSystemOptions::deviceTypes)
        .def_readwrite("relays", &VelkSystemOptions::relayTables)
        .def("set_tolerant", setTolerant, py::arg("tolerant"));
}

void addSearchOptions(py::module_ &module)
{
    py::class_<VelkSearchOptions>(module, "SearchOptions", "What bounds a search.")
        .def_readwrite("max_switches", &VelkSearchOptions::maxSwitches)
        .def_readwrite("max_connections", &VelkSearchOptions::maxConnections)
        .def_readwrite("max_routes", &VelkSearchOptions::maxRoutes)
        .def_readwrite("as_drawn", &VelkSearchOptions::asDrawn)
        .def_readwrite("through", &VelkSearchOptions::requiredComponents);
}

void addPlanRequest(py::module_ &module)
{
    const auto addConnection = [](VelkPlanRequest &request, const VelkRouteEnd &from, const VelkRouteEnd &to) {
        request.connections.push_back({from, to});
    };
    const auto setTimeLimit = [](VelkPlanRequest &request, double seconds) {
        request.timeLimit = std::chrono::milliseconds(std::llround(seconds * 1000));
    };
    py::class_<VelkPlanRequest>(module, "PlanRequest", "Connections that are to be there at once.")
        .def(py::init())
        .def("add_connection", addConnection, py::arg("start"), py::arg("end"))
        .def("set_time_limit", setTimeLimit, py::arg("seconds"))
        .def_readwrite("without", &VelkPlanRequest::withoutComponents)
        .def_readwrite("without_nets", &VelkPlanRequest::withoutNets)
        .def_readwrite("allow", &VelkPlanRequest::allowedComponents)
        .def_readwrite("allow_side_connections", &VelkPlanRequest::allowsSideConnections)
        .def_readwrite("forbid_couplings", &VelkPlanRequest::forbidsCouplings)
        .def_readwrite("trust_unknown", &VelkPlanRequest::trustsUnknown)
        .def_readwrite("fewest_changes", &VelkPlanRequest::fewestChanges);
}

void addSystem(py::module_ &module)
{
    const auto read = [](const Texts &netlists, const VelkSystemOptions &options) {
        return System(withoutLock([&] { return VelkSystem(netlists, options); }));
    };
    const auto open = [](const std::string &file) {
        return System(withoutLock([&] { return VelkSystem::open(file); }));
    };
    const auto applicationIni = [](const System &system, const System &application) {
        return withoutLock([&] { return system.asked().applicationIni(application.asked()); });
    };
    const auto writePhysicalIni = [](const System &system, const std::string &file) {
        withoutLock([&] { system.asked().writePhysicalIni(file); });
    };
    const auto writeApplicationIni = [](const System &system, const std::string &file, const System &application) {
        withoutLock([&] { system.asked().writeApplicationIni(file, application.asked()); });
    };
    const auto ask = [](auto question) {
        return [question](const System &system) { return withoutLock([&] { return (system.asked().*question)(); }); };
    };
    py::class_<System>(module, "System", "A test system that was read.")
        .def(py::init(read), py::arg("netlists"), py::arg("options"))
        .def_static("open", open, py::arg("file"))
        .def("keeping_out", &System::keepingOut, py::arg("components"), py::arg("nets"))
        .def("file_names", ask(&VelkSystem::fileNames))
        .def("search_options", ask(&VelkSystem::searchOptions))
        .def("excluded_components", ask(&VelkSystem::excludedComponents))
        .def("excluded_nets", ask(&VelkSystem::excludedNets))
        .def("warnings", ask(&VelkSystem::warnings))
        .def("components", &System::components, py::arg("properties"))
        .def("parts", &System::parts)
        .def("nets", &System::nets)
        .def("component", &System::component, py::arg("ref"))
        .def("part", &System::part, py::arg("name"))
        .def("net", &System::net, py::arg("name"))
        .def("pins", &System::pins, py::arg("ref"))
        .def("pin", &System::pin, py::arg("end"))
        .def("routes", &System::routes, py::arg("source"), py::arg("dut"), py::arg("options"))
        .def("why_no_route", &System::whyNoRoute, py::arg("source"), py::arg("dut"), py::arg("options"))
        .def("coverage", &System::coverage, py::arg("sources"), py::arg("duts"), py::arg("options"),
             py::arg("critical"), py::arg("progress"))
        .def("plan", &System::plan, py::arg("name"), py::arg("request"), py::arg("before"), py::arg("through"))
        .def("positions", &System::positions, py::arg("ref"))
        .def("unknown_relays", ask(&VelkSystem::unknownRelays))
        .def("position_errors", ask(&VelkSystem::positionErrors))
        .def("connected", &System::connected, py::arg("positions"))
        .def("check", &System::check, py::arg("ignore"))
        .def("physical_ini", ask(&VelkSystem::physicalIni))
        .def("application_ini", applicationIni, py::arg("application"))
        .def("write_physical_ini", writePhysicalIni, py::arg("file"))
        .def("write_application_ini", writeApplicationIni, py::arg("file"), py::arg("application"));
}
}

PYBIND11_MODULE(_velk, module)
{
    module.doc() = "What the module velk asks the library with. Not for users.";
    module.attr("version") = VelkRouting::version();
    raiseErrors();
    addEnd(module);
    addSystemOptions(module);
    addSearchOptions(module);
    addPlanRequest(module);
    addSystem(module);
}
