#include "tests/support/PlainProvider.h"
#include "tests/support/RandomSystems.h"

#include <velk/provider/MultipleEDAProvider.h>
#include <velk/routing/Routing.h>

#include <QLoggingCategory>

#include <cstdio>
#include <cstdlib>
#include <new>
#include <utility>

#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace Velk;

// Of the lists and texts of Qt, which take theirs from malloc(), one allocation fails; what is made with new does not.
static int allocationsUntilFailure = -1;
static bool failsNow()
{
    return allocationsUntilFailure >= 0 && allocationsUntilFailure-- == 0;
}

// NOLINTBEGIN(bugprone-reserved-identifier): the names of the C library
extern "C" void *__libc_malloc(std::size_t size);
extern "C" void *__libc_realloc(void *ptr, std::size_t size);
// NOLINTEND(bugprone-reserved-identifier)
extern "C" void *malloc(std::size_t size)
{
    return failsNow() ? nullptr : __libc_malloc(size);
}
extern "C" void *realloc(void *ptr, std::size_t size)
{
    return failsNow() ? nullptr : __libc_realloc(ptr, size);
}
void *operator new(std::size_t size)
{
    void *const block = __libc_malloc(size);
    return block ? block : throw std::bad_alloc();
}
void operator delete(void *block) noexcept
{
    std::free(block);
}
void operator delete(void *block, std::size_t) noexcept
{
    std::free(block);
}

namespace {

const QMap<QString, QString> fromU1{{u"Id"_s, u"U1"_s}};
const QMap<QString, QString> toD1{{u"Id"_s, u"D1"_s}};
const QString pin = u"1"_s;

qsizetype pathCount(const Routing &routing)
{
    return routing.findPaths(fromU1, pin, toD1, pin).size();
}

/// In a process of its own: whether the search finds that many paths all the same, or throws std::bad_alloc and finds
/// them the next time.
bool survives(int failure, const Routing &routing, qsizetype paths)
{
    const pid_t process = fork();
    if (process == 0) {
        allocationsUntilFailure = failure;
        try {
            _exit(pathCount(routing) == paths ? 0 : 1);
        } catch (const std::bad_alloc &) {
            _exit(pathCount(routing) == paths ? 0 : 1);
        }
    }
    int status = -1;
    waitpid(process, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

int allocationsOf(const Routing &routing)
{
    constexpr int plenty = 1'000'000;
    allocationsUntilFailure = plenty;
    pathCount(routing);
    return plenty - std::exchange(allocationsUntilFailure, -1);
}

bool survivesAllFailures(EDAProvider &provider, qsizetype bound)
{
    Routing routing(&provider);
    routing.setMaxPaths(bound);
    const qsizetype paths = pathCount(routing);
    const int allocations = allocationsOf(routing);
    int crashes = 0;
    for (int failure = 0; failure < allocations; ++failure)
        crashes += survives(failure, routing, paths) ? 0 : 1;
    std::printf("%d paths, %d allocations, %d crashes\n", static_cast<int>(paths), allocations, crashes);
    return paths > 3 && allocations > 5 && crashes == 0;
}
}

// Paths that connect nodes on their nets, some of them the same nodes.
int main()
{
    QLoggingCategory::setFilterRules(u"routing.debug=false"_s);
    const auto board = systemOf(u"U1 Source 1\nD1 DUT 1\nS1 Source 1,2\nS2 Source 1\nK1 Relay 1,2\nK2 Relay 1,2\n"
                                "K3 Relay 1,2\nK4 Relay 1,2\nK5 Relay 1,2\nK6 Relay 1,2\n"
                                "A: U1/1 K1/1 K2/1\nB: S1/1 K1/2 K3/1 K4/1 K6/1\nC: S1/2 S2/1 K2/2 K5/1 K6/2\n"
                                "D: K3/2 K4/2 K5/2 D1/1"_s);
    MultipleEDAProvider joined({board.get()}, {});
    PlainProvider plain(joined);
    const bool isGood = survivesAllFailures(joined, 0) && survivesAllFailures(joined, 4) &&
                        survivesAllFailures(plain, 0) && survivesAllFailures(plain, 4);
    return isGood ? 0 : 1;
}
