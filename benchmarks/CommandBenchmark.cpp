#include "benchmarks/Suite.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>

namespace VelkBenchmarks {

#ifdef VELK_BENCHMARK_COMMAND

namespace {

/// Starts `velk routes` on the exported system, with its result to nowhere, and waits for its end.
void runCommand()
{
    std::vector<std::string> arguments{VELK_BENCHMARK_COMMAND,
                                       "routes",
                                       "--source",
                                       "Dev=SMU",
                                       "--source",
                                       "DevNo=1",
                                       "--source-pin",
                                       "FORCE_HI",
                                       "--dut",
                                       "CompType=DUT",
                                       "--dut",
                                       "Bench=1",
                                       "--dut-pin",
                                       "VCC"};
    for (const auto &file : exportedNetlists())
        arguments.push_back(file);
    std::vector<char *> pointers;
    pointers.reserve(arguments.size() + 1);
    for (auto &argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t process = 0;
    const bool isStarted = posix_spawn(&process, pointers.front(), &actions, nullptr, pointers.data(), environ) == 0;
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    if (!isStarted || waitpid(process, &status, 0) != process || status != 0)
        throw std::runtime_error("velk routes failed");
}
}

void registerCommand()
{
    registerComparison("command/routes", []() -> Comparison {
        return {{{"velk", [] { return secondsOf(runCommand); }}}, {}};
    });
}

#else

void registerCommand() {}

#endif
}
