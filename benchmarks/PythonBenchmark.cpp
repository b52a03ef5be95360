#include "benchmarks/Suite.h"
#include "benchmarks/System.h"

#include <velk/facade/VelkSystem.h>

#include <QTemporaryDir>

#include <pybind11/embed.h>
#include <pybind11/stl.h>

#include <algorithm>
#include <optional>
#include <stdexcept>

namespace py = pybind11;

using namespace Velk;

namespace VelkBenchmarks {

namespace {

constexpr std::size_t queryCount = 1000;

/// One system, read for C++ and for Python, and the same questions for both.
struct SystemInTwoLanguages
{
    std::vector<FacadeQuery> queries;
    std::size_t routeCount; ///< of each query
    std::optional<VelkSystem> system;
    py::object ask; ///< asks all of the queries, and returns how many routes there are
};

/// Never stopped, since what is kept last is released when the program ends.
void startPython()
{
    if (!Py_IsInitialized())
        py::initialize_interpreter();
}

/// Of queries in turn as many as are measured.
std::vector<FacadeQuery> queriesOf(const Workload &workload)
{
    std::vector<FacadeQuery> queries;
    for (std::size_t i = 0; i < queryCount; ++i)
        queries.emplace_back(workload.queries[i % workload.queries.size()]);
    return queries;
}

py::object askInPython(const std::vector<std::string> &files, const std::vector<FacadeQuery> &queries)
{
    py::dict names(py::arg("python_path") = VELK_BENCHMARK_PYTHON);
    py::exec(R"(
import sys
sys.path.insert(0, python_path)
import velk

def asking(files, queries):
    system = velk.System(files)

    def ask():
        count = 0
        for source, source_pin, dut, dut_pin in queries:
            count += len(system.routes(source, source_pin, dut=dut, dut_pin=dut_pin))
        return count

    return ask
)",
             names);
    py::list list;
    for (const FacadeQuery &query : queries)
        list.append(py::make_tuple(query.source, query.sourcePin, query.destination, query.destinationPin));
    return names["asking"](files, list);
}

SystemInTwoLanguages loadInTwoLanguages(const Workload &workload)
{
    const QTemporaryDir folder;
    const auto files = writeNetlists(workload, folder);
    SystemInTwoLanguages result{
        queriesOf(workload), static_cast<std::size_t>(workload.routeCount), VelkSystem(files), {}};
    result.ask = askInPython(files, result.queries);
    return result;
}

std::size_t askInCpp(const SystemInTwoLanguages &asked)
{
    std::size_t count = 0;
    for (const FacadeQuery &query : asked.queries)
        count +=
            asked.system->routes({query.source, query.sourcePin}, {query.destination, query.destinationPin}).size();
    return count;
}
}

void registerPython(const Suite &suite)
{
    const std::string name = "python/sparse/" + std::to_string(suite.mainSize);
    registerComparison(name, [=]() -> Comparison {
        startPython();
        const auto &asked = kept(name, [&] { return loadInTwoLanguages(sparseSystem(suite.mainSize)); });
        const auto inPython = [&asked] { return asked.ask().cast<std::size_t>(); };
        if (askInCpp(asked) != queryCount * asked.routeCount || inPython() != queryCount * asked.routeCount)
            throw std::logic_error("another number of routes");
        return {{{"velk", [=] { return secondsOf(inPython); }},
                 {"cpp", [&asked] { return secondsOf([&asked] { return askInCpp(asked); }); }}},
                {{"queries", static_cast<double>(queryCount)}}};
    });
}
}
