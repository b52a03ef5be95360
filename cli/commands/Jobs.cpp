#include "cli/commands/Jobs.h"

#include "cli/terminal/Progress.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace VelkCli {

namespace {

/// What threads share.
class Jobs
{
public:
    Jobs(qsizetype jobCount, const std::function<void(qsizetype)> &job)
        : count(jobCount)
        , work(job)
    {
    }

    void doThem()
    try {
        for (qsizetype job = next++; job < count; job = next++) {
            work(job);
            Progress::advance(1);
        }
    } catch (...) {
        next = count;
        const std::lock_guard lock(mutex);
        failure = std::current_exception();
    }

    void throwFailure() const
    {
        if (failure)
            std::rethrow_exception(failure);
    }

private:
    const qsizetype count;
    const std::function<void(qsizetype)> &work;
    std::atomic<qsizetype> next = 0;
    std::mutex mutex;
    std::exception_ptr failure;
};

qsizetype threadsFor(int wanted)
{
    return wanted > 0 ? wanted : std::max(1U, std::thread::hardware_concurrency());
}
}

void workInThreads(int threads, qsizetype count, const std::function<void(qsizetype)> &work)
{
    Jobs jobs(count, work);
    std::vector<std::thread> others;
    const qsizetype otherThreads = std::min(threadsFor(threads), count) - 1;
    try {
        for (qsizetype i = 0; i < otherThreads; ++i)
            others.emplace_back([&jobs] { jobs.doThem(); });
    } catch (const std::system_error &) { // no more threads can be had: it works with those there are
    }
    jobs.doThem();
    for (std::thread &thread : others)
        thread.join();
    jobs.throwFailure();
}
}
