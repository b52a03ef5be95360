#ifndef VELK_BENCHMARKS_SUITE_H
#define VELK_BENCHMARKS_SUITE_H

#include "benchmarks/Workload.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <string>

namespace VelkBenchmarks {

/// A cascade of crosspoint matrices; see crosspointCascade().
struct Cascade
{
    std::string name;
    std::vector<int> lines;
    int maxSwitches;
    qsizetype routeCount;

    Workload make() const { return crosspointCascade(lines, maxSwitches, routeCount); }
};

/// What is measured: all of it, or small systems to prove that the benchmarks run.
struct Suite
{
    bool isQuick;
    qsizetype mainSize;           ///< nodes of the sparse system where one size is measured
    std::vector<qsizetype> sizes; ///< where growth is measured
    qsizetype readingBytes;
    std::vector<Cascade> dense;
    Cascade bigMatrices;

    static Suite full();
    static Suite quick();
};

void registerReading(const Suite &suite);
void registerJoining(const Suite &suite);
void registerQueries(const Suite &suite);
void registerThreads(const Suite &suite);

/// To be called while an exception is handled: the benchmark has failed with its message.
void reportFailure(benchmark::State &state);

/// Registers a benchmark that reports the seconds which \a run returns, so that it can leave its set-up and clean-up
/// out. \a run throws to give up.
template <typename Run>
benchmark::internal::Benchmark *registerTimed(const std::string &name, Run run)
{
    const auto body = [run](benchmark::State &state) {
        try {
            for ([[maybe_unused]] auto step : state)
                state.SetIterationTime(run(state));
        } catch (...) {
            reportFailure(state);
        }
    };
    return benchmark::RegisterBenchmark(name.c_str(), body)->UseManualTime()->Unit(benchmark::kMillisecond);
}

template <typename Task>
double secondsOf(Task task)
{
    const auto start = std::chrono::steady_clock::now();
    task();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}
}

#endif
