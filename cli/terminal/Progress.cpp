#include "cli/terminal/Progress.h"

#include "cli/terminal/Terminal.h"

#include <algorithm>
#include <system_error>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace VelkCli {

namespace {

constexpr auto patience = 2s;
constexpr auto betweenDrawings = 250ms;

Progress *current = nullptr; // set by the main thread, while there are no others that report
}

Progress::Progress()
{
    if (!takesControlSequences(stderr))
        return;
    try {
        watcher = std::thread([this] { watch(); });
        current = this;
    } catch (const std::system_error &) { // no thread can be had: it works without
    }
}

Progress::~Progress()
{
    stop();
}

void Progress::begin(const QString &step, qint64 units)
{
    if (!current)
        return;
    const std::lock_guard lock(current->mutex);
    current->step = step;
    current->unitsOfStep = units;
    current->unitsDone = 0;
    current->startOfStep = Clock::now();
}

void Progress::advance(qint64 units)
{
    if (current)
        current->unitsDone += units;
}

void Progress::end()
{
    if (current)
        current->stop();
}

Progress::Hidden::Hidden()
{
    if (!current)
        return;
    lock = std::unique_lock(current->mutex);
    current->erase();
}

void Progress::watch()
{
    std::unique_lock lock(mutex);
    auto next = start + patience;
    while (!ending.wait_until(lock, next, [this] { return isEnding; })) {
        draw();
        next = Clock::now() + betweenDrawings;
    }
    erase();
}

void Progress::stop()
{
    if (!watcher.joinable())
        return;
    {
        const std::lock_guard lock(mutex);
        isEnding = true;
    }
    ending.notify_one();
    watcher.join();
    current = nullptr;
}

// Over the line before, and without a line break where the terminal is too narrow: that could not be erased.
void Progress::draw()
{
    if (step.isEmpty())
        return;
    std::fputs(qUtf8Printable(u"\r\x1b[?7l%1\x1b[K\x1b[?7h"_s.arg(printable(text()))), stderr);
    isShown = true;
}

void Progress::erase()
{
    if (isShown)
        std::fputs("\r\x1b[K", stderr);
    isShown = false;
}

QString Progress::text() const
{
    if (unitsOfStep > 0) {
        const qint64 percent = std::min<qint64>(unitsDone * 100 / unitsOfStep, 100);
        return u"velk: %1: %2 %"_s.arg(step, QString::number(percent));
    }
    const auto seconds = std::chrono::round<std::chrono::seconds>(Clock::now() - startOfStep).count();
    return u"velk: %1 (%2 s)"_s.arg(step, QString::number(seconds));
}
}
