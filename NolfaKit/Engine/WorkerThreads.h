#pragma once

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <stop_token>
#include <thread>
#include <vector>

namespace nolfa {

/// A few threads, started as they are needed, that run jobs in the order in which these were posted. Thread-safe.
/// Destruction waits for all jobs posted before it.
class WorkerThreads {
public:
    /// Must not throw.
    using Job = std::function<void()>;

    /// @param limit  never more threads than this
    explicit WorkerThreads(std::size_t limit);
    WorkerThreads(const WorkerThreads &) = delete;
    WorkerThreads &operator=(const WorkerThreads &) = delete;
    ~WorkerThreads();

    /// Makes sure that there is a thread for one more job, unless the limit is reached.
    /// @throws std::system_error when there is no thread at all and none can be started.
    void prepare();

    /// Starts no thread: call prepare() some time before.
    void post(Job job);

private:
    void work(const std::stop_token &stop);

    const std::size_t m_limit;
    /// Set once there are as many threads as there may be; so thousands of calls don't fight for the lock.
    std::atomic<bool> m_isComplete = false;
    std::mutex m_mutex; ///< guards all that follows
    std::condition_variable_any m_posted;
    std::deque<Job> m_jobs;
    std::size_t m_busy = 0;
    std::vector<std::jthread> m_threads;
};

} // namespace nolfa
