#include "benchmarks/Suite.h"

#include <velk/facade/VelkRouting.h>
#include <velk/model/EDAException.h>

#include <exception>

namespace VelkBenchmarks {

Suite Suite::full()
{
    return {false,
            100'000,
            {1'000, 10'000, 100'000, 1'000'000},
            10'000'000,
            {{"22x24", {22, 24}, 5, 213'004},
             {"10x10x10", {10, 10, 10}, 5, 221'950},
             {"17x17x17x17", {17, 17, 17, 17}, 4, 222'241}},
            {"32x32x32", {32, 32, 32}, 4, 61'536}};
}

Suite Suite::quick()
{
    return {true,
            10'000,
            {1'000, 10'000},
            500'000,
            {{"9x9", {9, 9}, 5, 3'201}, {"5x5x5", {5, 5, 5}, 5, 3'525}},
            {"8x8x8", {8, 8, 8}, 3, 792}};
}

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
}
