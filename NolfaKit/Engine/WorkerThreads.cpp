#include "Engine/WorkerThreads.h"

#include <system_error>
#include <utility>

namespace nolfa {

WorkerThreads::WorkerThreads(std::size_t limit)
    : m_limit(limit)
{
}

WorkerThreads::~WorkerThreads()
{
    // Out of the lock, since the last jobs may prepare or post.
    std::vector<std::jthread> threads;
    {
        const std::scoped_lock lock(m_mutex);
        threads.swap(m_threads);
    }
    for (std::jthread &thread : threads)
        thread.request_stop();
}

void WorkerThreads::prepare()
{
    if (m_isComplete)
        return;
    const std::scoped_lock lock(m_mutex);
    if (m_threads.size() > m_busy + m_jobs.size())
        return;
    try {
        m_threads.emplace_back([this](const std::stop_token &stop) { work(stop); });
        m_isComplete = m_threads.size() == m_limit;
    } catch (const std::system_error &) {
        // With fewer threads it takes longer; without any it would take for ever.
        if (m_threads.empty())
            throw;
    }
}

void WorkerThreads::post(Job job)
{
    {
        const std::scoped_lock lock(m_mutex);
        m_jobs.push_back(std::move(job));
    }
    m_posted.notify_one();
}

void WorkerThreads::work(const std::stop_token &stop)
{
    std::unique_lock lock(m_mutex);
    while (m_posted.wait(lock, stop, [this] { return !m_jobs.empty(); })) {
        Job job = std::move(m_jobs.front());
        m_jobs.pop_front();
        ++m_busy;
        lock.unlock();
        job();
        // What the job holds goes while nobody waits for the lock.
        job = nullptr;
        lock.lock();
        --m_busy;
    }
}

} // namespace nolfa
