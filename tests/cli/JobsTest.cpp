#include "cli/commands/Jobs.h"
#include "tests/support/TestRegistry.h"

#include <QTest>

#include <atomic>
#include <set>
#include <stdexcept>
#include <thread>
#include <vector>

using namespace VelkCli;

class JobsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void doesEachOnce_data()
    {
        QTest::addColumn<int>("threads");
        QTest::addColumn<int>("count");
        QTest::newRow("nothing to do") << 2 << 0;
        QTest::newRow("one thread") << 1 << 100;
        QTest::newRow("three threads") << 3 << 1000;
        QTest::newRow("more threads than jobs") << 8 << 2;
        QTest::newRow("as many threads as processors") << 0 << 1000;
    }
    void doesEachOnce()
    {
        QFETCH(int, threads);
        QFETCH(int, count);
        std::vector<std::atomic<int>> times(static_cast<std::size_t>(count));
        workInThreads(threads, count, [&](qsizetype job) { ++times[static_cast<std::size_t>(job)]; });
        for (const auto &timesOfOne : times)
            QCOMPARE(timesOfOne.load(), 1);
    }

    void worksInSoManyThreads()
    {
        std::atomic<int> waiting = 0;
        workInThreads(3, 3, [&](qsizetype) {
            ++waiting;
            while (waiting < 3) // for ever, if there were fewer threads
                std::this_thread::yield();
        });
        std::set<std::thread::id> ids;
        workInThreads(1, 100, [&](qsizetype) { ids.insert(std::this_thread::get_id()); });
        QCOMPARE(ids, std::set{std::this_thread::get_id()});
    }

    void endsByAnException()
    {
        for (const int threads : {1, 3}) {
            std::atomic<int> done = 0;
            QVERIFY_THROWS_EXCEPTION(std::runtime_error, workInThreads(threads, 1'000'000'000'000, [&](qsizetype job) {
                                         ++done;
                                         if (job == 5)
                                             throw std::runtime_error("five");
                                     }));
            QVERIFY(done > 5);
        }
    }
};

VELK_TEST(JobsTest)

#include "JobsTest.moc"
