#include "benchmarks/PeakMemory.h"
#include "benchmarks/Suite.h"

#include <QLoggingCategory>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <exception>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

int run(int argc, char **argv)
{
    using namespace VelkBenchmarks;

    if (argc == 3 && std::strcmp(argv[1], "--load") == 0) {
        loadAndPrintPeakMemory(argv[2]);
        return 0;
    }

    // The trace is on by default and costs far more than what is measured.
    QLoggingCategory::setFilterRules(u"routing.debug=false"_s);

    std::vector<char *> arguments(argv, argv + argc);
    const auto isQuick = [](const char *argument) { return std::strcmp(argument, "--quick") == 0; };
    const auto quick = std::remove_if(arguments.begin(), arguments.end(), isQuick);
    const Suite suite = quick == arguments.end() ? Suite::full() : Suite::quick();
    arguments.erase(quick, arguments.end());

    registerLoading(suite);
    registerJoining(suite);
    registerQueries(suite);
    registerThreads(suite);
    registerStates();
    registerCoverage(suite);
#ifdef VELK_HAS_PLANNING
    registerPlanning(suite);
#endif
#ifdef VELK_HAS_PYTHON
    registerPython(suite);
#endif
    registerCommand();

    int count = static_cast<int>(arguments.size());
    benchmark::AddCustomContext("main_size", std::to_string(suite.mainSize));
    benchmark::AddCustomContext("quick", suite.isQuick ? "yes" : "no");
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data()))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
}

int main(int argc, char **argv)
{
    try {
        return run(argc, argv);
    } catch (const std::exception &exception) {
        std::fprintf(stderr, "velk-benchmark: %s\n", exception.what());
        return 1;
    }
}
