#ifndef VELK_CLI_TERMINAL_PROGRESS_H
#define VELK_CLI_TERMINAL_PROGRESS_H

#include <QString>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace VelkCli {

/// A line on standard error about what takes so long: only on a terminal and only after two seconds. There is one at
/// most at a time; what reports to it need not know whether there is one.
class Progress
{
public:
    Progress();
    ~Progress();
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;

    /// What is being done now, in so many units or, if that is not known, 0.
    static void begin(const QString &step, qint64 units = 0);
    static void advance(qint64 units);
    /// Erases the line for good, as before anything else is written to the terminal.
    static void end();

    /// Erases the line for as long as this lives, as for a message.
    class Hidden
    {
    public:
        Hidden();

    private:
        std::unique_lock<std::mutex> lock;
    };

private:
    void watch();
    void stop();
    void draw();
    void erase();
    QString text() const;

    using Clock = std::chrono::steady_clock;
    const Clock::time_point start = Clock::now();
    std::mutex mutex; ///< for all below but the number of units
    std::condition_variable ending;
    bool isEnding = false;
    bool isShown = false;
    QString step;
    qint64 unitsOfStep = 0;
    Clock::time_point startOfStep = start;
    std::atomic<qint64> unitsDone = 0;
    std::thread watcher;
};

/// As the name of a file this is standard input or output.
constexpr QStringView standardStream = u"-";
}

#endif
