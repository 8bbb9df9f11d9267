#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>
#include <vector>

namespace KelStd::cli {

/// Does tasks on several threads and hands out what became of them in the order of the tasks. A
/// thread is started when a task finds all others at work. Used by one thread.
template <typename Task, typename Result>
class OrderedWorkers
{
public:
    using Work = std::function<Result(Task &)>;

    /// `makeWork` is called on each new thread, to give it a worker of its own.
    OrderedWorkers(std::size_t maxThreads, std::function<Work()> makeWork)
        : m_maxThreads(maxThreads), m_makeWork(std::move(makeWork))
    {}

    /// Waits for the tasks that are being done and drops the others.
    ~OrderedWorkers()
    {
        {
            const std::lock_guard lock(m_mutex);
            m_isEnding = true;
        }
        m_changed.notify_all();
        for (std::thread &thread : m_threads)
            thread.join();
    }

    OrderedWorkers(const OrderedWorkers &) = delete;
    OrderedWorkers &operator=(const OrderedWorkers &) = delete;

    bool isEmpty() const { return m_given.empty(); }

    /// Whether so many tasks are under way that no thread has to wait for one.
    bool isFull() const { return m_given.size() >= 2 * m_maxThreads; }

    void add(Task task)
    {
        auto job = std::make_shared<Job>(std::move(task));
        m_given.push_back(job);
        bool needsThread = false;
        {
            const std::lock_guard lock(m_mutex);
            m_waiting.push_back(std::move(job));
            needsThread = m_waiting.size() > m_idle && m_threads.size() < m_maxThreads;
        }
        if (needsThread)
            startThread();
        m_changed.notify_all();
    }

    /// Waits for the oldest task and returns its result, or raises what it has raised.
    Result take()
    {
        const std::shared_ptr<Job> job = m_given.front();
        m_given.pop_front();
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [&] { return job->isDone; });
        if (job->raised)
            std::rethrow_exception(job->raised);
        return std::move(*job->result);
    }

private:
    void startThread()
    {
        try {
            m_threads.emplace_back([this] { workOn(); });
        } catch (const std::system_error &) {
            // The machine gives no more of them: those that there are do.
            if (m_threads.empty())
                throw;
        }
    }

    struct Job
    {
        explicit Job(Task given) : task(std::move(given)) {}

        Task task;
        std::optional<Result> result;
        std::exception_ptr raised;
        bool isDone = false;
    };

    void workOn()
    {
        Work work;
        std::unique_lock lock(m_mutex);
        for (;;) {
            ++m_idle;
            m_changed.wait(lock, [this] { return m_isEnding || !m_waiting.empty(); });
            --m_idle;
            if (m_isEnding)
                return;
            const std::shared_ptr<Job> job = std::move(m_waiting.front());
            m_waiting.pop_front();
            lock.unlock();
            try {
                if (!work)
                    work = m_makeWork();
                job->result = work(job->task);
            } catch (...) {
                job->raised = std::current_exception();
            }
            lock.lock();
            job->isDone = true;
            m_changed.notify_all();
        }
    }

    const std::size_t m_maxThreads;
    const std::function<Work()> m_makeWork;
    std::vector<std::thread> m_threads;
    std::deque<std::shared_ptr<Job>> m_given; ///< all whose results were not taken, in their order

    std::mutex m_mutex; ///< of all that follows, and of the jobs' results
    std::condition_variable m_changed;
    std::deque<std::shared_ptr<Job>> m_waiting;
    std::size_t m_idle = 0;
    bool m_isEnding = false;
};

} // namespace KelStd::cli
