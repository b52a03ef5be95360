#include "benchmarks/Suite.h"

#include <velk/facade/VelkRouting.h>
#include <velk/model/EDAException.h>

#include <algorithm>
#include <exception>
#include <limits>

namespace VelkBenchmarks {

Suite Suite::full()
{
    return {false,
            100'000,
            {1'000, 10'000, 100'000, 1'000'000},
            35'000'000,
            {{"24x24-groups", [] { return crosspointGroups(24, 18, 256'566); }},
             {"16x16x16x16",
              [] {
                  return crosspointCascade({16, 16, 16, 16}, 55, 4, 173'056);
              }},
             {"32x32x32", [] {
                  return crosspointCascade({32, 32, 32}, 22, 4, 61'536);
              }}}};
}

Suite Suite::quick()
{
    return {true,
            10'000,
            {1'000, 10'000},
            500'000,
            {{"8x8-groups", [] { return crosspointGroups(8, 2, 1'814); }},
             {"5x5x5x5",
              [] {
                  return crosspointCascade({5, 5, 5, 5}, 2, 4, 1'225);
              }},
             {"8x8x8", [] {
                  return crosspointCascade({8, 8, 8}, 2, 3, 792);
              }}}};
}

// A request that is not small has the allocator join small free pieces first.
void tidyHeap()
{
    constexpr std::size_t notSmall = 100'000;
    benchmark::DoNotOptimize(std::make_unique<char[]>(notSmall).get());
}

KeptThing &KeptThing::last()
{
    static KeptThing thing;
    return thing;
}

namespace {

/// To be called while an exception is handled: the benchmark has failed with its message.
void reportFailure(benchmark::State &state)
{
    std::string message = "unknown failure";
    try {
        throw;
    } catch (const std::exception &failure) {
        message = failure.what();
    } catch (const Velk::EDAException &failure) {
        message = failure.message().toStdString();
    } catch (const Velk::VelkRoutingException &failure) {
        message = failure.message();
    } catch (...) { // NOLINT(bugprone-empty-catch): the message says what there is to say
    }
    state.SkipWithError(message.c_str());
}

void compare(benchmark::State &state, const Comparison &comparison)
{
    std::vector<double> fastest(comparison.contenders.size(), std::numeric_limits<double>::max());
    for ([[maybe_unused]] auto step : state) {
        state.SetIterationTime(secondsOf([&] {
            for (std::size_t i = 0; i < fastest.size(); ++i)
                fastest[i] = std::min(fastest[i], comparison.contenders[i].seconds());
        }));
    }
    for (std::size_t i = 0; i < fastest.size(); ++i)
        state.counters[comparison.contenders[i].name] = fastest[i];
    for (const auto &[name, size] : comparison.sizes)
        state.counters[name] = size;
}
}

benchmark::internal::Benchmark *registerComparison(const std::string &name, const std::function<Comparison()> &prepare)
{
    const auto body = [prepare](benchmark::State &state) {
        try {
            compare(state, prepare());
        } catch (...) {
            reportFailure(state);
        }
    };
    return benchmark::RegisterBenchmark(name.c_str(), body)->UseManualTime()->Unit(benchmark::kMillisecond);
}
}
