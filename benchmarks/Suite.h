#ifndef VELK_BENCHMARKS_SUITE_H
#define VELK_BENCHMARKS_SUITE_H

#include "benchmarks/Workload.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace VelkBenchmarks {

/// A system whose queries have very many routes.
struct DenseSystem
{
    std::string name;
    std::function<Workload()> make;
};

/// What is measured: all of it, or small systems to prove that the benchmarks run.
struct Suite
{
    bool isQuick;
    qsizetype mainSize;           ///< nodes of the sparse system where one size is measured
    std::vector<qsizetype> sizes; ///< where growth is measured
    qsizetype fileBytes;          ///< of the netlist whose loading is measured in memory
    std::vector<DenseSystem> dense;

    static Suite full();
    static Suite quick();
};

void registerLoading(const Suite &suite);
void registerJoining(const Suite &suite);
void registerQueries(const Suite &suite);
void registerThreads(const Suite &suite);
void registerStates();
void registerCoverage(const Suite &suite);
void registerPlanning(const Suite &suite);
void registerPython(const Suite &suite);
void registerCommand();

/// One of the ways to do a task.
struct Contender
{
    std::string name;
    std::function<double()> seconds; ///< runs once, leaving out what is not to be timed
};

/// Ways to do the same, or as much of it as the types of the results cost alone.
struct Comparison
{
    std::vector<Contender> contenders;
    std::map<std::string, double> sizes; ///< of what is compared
};

/// Registers a benchmark whose contenders take turns, so that what else the machine does slows down all of them. The
/// seconds of the fastest run of each become a counter of its name. \a prepare is called often, so it is to keep what
/// takes long; it throws to give up.
benchmark::internal::Benchmark *registerComparison(const std::string &name, const std::function<Comparison()> &prepare);

template <typename Task>
double secondsOf(Task task)
{
    const auto start = std::chrono::steady_clock::now();
    task();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// Puts in order what has been freed, which the next to ask for memory would do.
void tidyHeap();

/// What \a make returns, which is released outside of the time.
template <typename Make>
double secondsToMake(Make make)
{
    decltype(make()) made;
    tidyHeap();
    return secondsOf([&] { made = make(); });
}

/// Of one call of a short task with the release of its result, after a call that warms up.
template <typename Task>
double secondsOfEach(Task task)
{
    constexpr int calls = 500;
    benchmark::DoNotOptimize(task());
    return secondsOf([&] {
               for (int i = 0; i < calls; ++i)
                   benchmark::DoNotOptimize(task());
           }) /
           calls;
}

/// The one big thing that the benchmarks at work share, and its name.
struct KeptThing
{
    std::string name;
    std::shared_ptr<void> thing;

    static KeptThing &last();
};

/// The thing of that name. Only the last one is kept, so that benchmarks on one system make it once. A name stands for
/// one type.
template <typename Make>
auto &kept(const std::string &name, Make make)
{
    using Thing = decltype(make());
    KeptThing &last = KeptThing::last();
    if (last.name != name) {
        last = {}; // before the other is made
        last = {name, std::shared_ptr<Thing>(new Thing(make()))};
    }
    return *static_cast<Thing *>(last.thing.get());
}
}

#endif
