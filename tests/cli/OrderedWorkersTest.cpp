#include <cli/run/OrderedWorkers.h>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <random>
#include <set>
#include <stdexcept>
#include <string>

namespace KelStd {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using Workers = cli::OrderedWorkers<int, int>;

constexpr auto patience = 60s; // for a machine under load

/// Threads that stop at a gate until it opens.
class Gate
{
public:
    void open()
    {
        const std::lock_guard lock(m_mutex);
        m_isOpen = true;
        m_changed.notify_all();
    }

    void pass()
    {
        std::unique_lock lock(m_mutex);
        ++m_arrived;
        m_changed.notify_all();
        m_changed.wait(lock, [this] { return m_isOpen; });
    }

    /// Waits until so many have come to the gate; false when they never do.
    bool waitFor(int count)
    {
        std::unique_lock lock(m_mutex);
        return m_changed.wait_for(lock, patience, [&] { return m_arrived >= count; });
    }

    int arrived()
    {
        const std::lock_guard lock(m_mutex);
        return m_arrived;
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    int m_arrived = 0;
    bool m_isOpen = false;
};

TEST(OrderedWorkers, GiveTheResultsInTheOrderOfTheTasks)
{
    constexpr int tasks = 3000;
    for (std::size_t threads = 1; threads <= 8; ++threads) {
        SCOPED_TRACE(threads);
        std::atomic<int> atWork{0};
        std::atomic<int> maxAtWork{0};
        std::atomic<int> madeWorkers{0};
        Workers workers(threads, [&] {
            ++madeWorkers;
            const auto owner = std::this_thread::get_id();
            return [&, owner](int &task) {
                EXPECT_EQ(std::this_thread::get_id(), owner);
                const int now = ++atWork;
                for (int max = maxAtWork; now > max;)
                    maxAtWork.compare_exchange_weak(max, now);
                std::mt19937 random(static_cast<unsigned>(task));
                if (random() % 8 == 0)
                    std::this_thread::sleep_for(std::chrono::microseconds(random() % 500));
                --atWork;
                return 2 * task + 1;
            };
        });
        int taken = 0;
        for (int task = 0; task < tasks; ++task) {
            while (workers.isFull())
                ASSERT_EQ(workers.take(), 2 * taken++ + 1);
            workers.add(task);
        }
        for (; !workers.isEmpty(); ++taken)
            ASSERT_EQ(workers.take(), 2 * taken + 1);
        EXPECT_EQ(taken, tasks);
        EXPECT_LE(static_cast<std::size_t>(maxAtWork), threads);
        EXPECT_LE(static_cast<std::size_t>(madeWorkers), threads);
    }
}

TEST(OrderedWorkers, AsManyThreadsWorkAsTheyMayAndNoMore)
{
    for (const int threads : {1, 2, 5, 8}) {
        Gate gate;
        Workers workers(static_cast<std::size_t>(threads), [&] {
            return [&](int &task) {
                gate.pass();
                return task;
            };
        });
        for (int task = 0; task < 4 * threads; ++task)
            workers.add(task);
        EXPECT_TRUE(gate.waitFor(threads)) << gate.arrived();
        std::this_thread::sleep_for(20ms);
        EXPECT_EQ(gate.arrived(), threads);
        gate.open();
        for (int task = 0; task < 4 * threads; ++task)
            EXPECT_EQ(workers.take(), task);
    }
}

TEST(OrderedWorkers, EachThreadMakesItsWorkerOnce)
{
    constexpr int threads = 4;
    Gate gate;
    std::mutex mutex;
    std::multiset<std::thread::id> makers;
    Workers workers(threads, [&] {
        const std::lock_guard lock(mutex);
        makers.insert(std::this_thread::get_id());
        return [&](int &task) {
            gate.pass();
            return task;
        };
    });
    for (int task = 0; task < 100; ++task)
        workers.add(task);
    ASSERT_TRUE(gate.waitFor(threads));
    gate.open();
    for (int task = 0; task < 100; ++task)
        EXPECT_EQ(workers.take(), task);
    EXPECT_EQ(makers.size(), std::size_t(threads));
    for (const std::thread::id maker : makers)
        EXPECT_EQ(makers.count(maker), 1U);
    EXPECT_EQ(makers.count(std::this_thread::get_id()), 0U);
}

TEST(OrderedWorkers, OneTaskAfterTheOtherNeedsOneThread)
{
    std::atomic<int> madeWorkers{0};
    Workers workers(8, [&] {
        ++madeWorkers;
        return [](int &task) { return task; };
    });
    for (int task = 0; task < 50; ++task) {
        workers.add(task);
        ASSERT_EQ(workers.take(), task);
        std::this_thread::sleep_for(1ms); // the thread goes back to wait
    }
    EXPECT_LT(madeWorkers, 8);
}

TEST(OrderedWorkers, AnExceptionIsRaisedAtThePlaceOfItsTask)
{
    for (const std::size_t threads : {1U, 3U}) {
        Workers workers(threads, [] {
            return [](int &task) {
                if (task % 7 == 3)
                    throw std::runtime_error(std::to_string(task));
                return task;
            };
        });
        for (int task = 0; task < 100; ++task)
            workers.add(task);
        for (int task = 0; task < 100; ++task) {
            if (task % 7 != 3) {
                EXPECT_EQ(workers.take(), task);
                continue;
            }
            try {
                workers.take();
                ADD_FAILURE() << task << " raised nothing";
            } catch (const std::runtime_error &raised) {
                EXPECT_EQ(raised.what(), std::to_string(task));
            }
        }
        EXPECT_TRUE(workers.isEmpty());
    }
}

TEST(OrderedWorkers, AWorkerThatCannotBeMadeIsAnExceptionOfItsTask)
{
    int attempts = 0;
    Workers workers(1, [&]() -> Workers::Work {
        if (++attempts == 1)
            throw std::runtime_error("no worker");
        return [](int &task) { return task; };
    });
    workers.add(1);
    workers.add(2);
    EXPECT_THROW(workers.take(), std::runtime_error);
    EXPECT_EQ(workers.take(), 2);
}

TEST(OrderedWorkers, TheEndDropsTheTasksThatWait)
{
    constexpr int threads = 2;
    std::atomic<int> done{0};
    Gate gate;
    std::thread opener;
    {
        Workers workers(threads, [&] {
            return [&](int &task) {
                gate.pass();
                ++done;
                return task;
            };
        });
        for (int task = 0; task < 1000; ++task)
            workers.add(task);
        ASSERT_TRUE(gate.waitFor(threads));
        opener = std::thread([&] {
            std::this_thread::sleep_for(300ms); // the end has begun
            gate.open();
        });
    }
    EXPECT_EQ(done, threads);
    opener.join();
}

TEST(OrderedWorkers, WithoutTasksTheEndHasNothingToWaitFor)
{
    const Workers workers(8, [] { return [](int &task) { return task; }; });
    EXPECT_TRUE(workers.isEmpty());
    EXPECT_FALSE(workers.isFull());
}

/// Full is when every thread has a task and one more waits for each.
TEST(OrderedWorkers, AreFullWithTwoTasksAThread)
{
    for (const int threads : {1, 3}) {
        Workers workers(static_cast<std::size_t>(threads),
                        [] { return [](int &task) { return task; }; });
        for (int task = 0; task < 2 * threads; ++task) {
            EXPECT_FALSE(workers.isFull()) << task;
            workers.add(task);
            EXPECT_FALSE(workers.isEmpty());
        }
        EXPECT_TRUE(workers.isFull());
        EXPECT_EQ(workers.take(), 0);
        EXPECT_FALSE(workers.isFull());
        while (!workers.isEmpty())
            workers.take();
    }
}

} // namespace
} // namespace KelStd
