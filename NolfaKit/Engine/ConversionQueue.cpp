#include "Engine/ConversionQueue.h"

#include <algorithm>
#include <condition_variable>
#include <optional>

namespace nolfa {

/// A thread that is held up in run().
class ConversionQueue::BlockedCaller : public Waiter {
public:
    void grant() override { settle(Answer::granted); }
    void cancel() override { settle(Answer::cancelled); }

    /// @throws CancellationError
    void wait()
    {
        std::unique_lock lock(m_mutex);
        m_settled.wait(lock, [this] { return m_answer != Answer::none; });
        if (m_answer == Answer::cancelled)
            throw CancellationError();
    }

private:
    enum class Answer { none, granted, cancelled };

    void settle(Answer answer)
    {
        const std::scoped_lock lock(m_mutex);
        m_answer = answer;
        m_settled.notify_one();
    }

    std::mutex m_mutex;
    std::condition_variable m_settled;
    Answer m_answer = Answer::none;
};

/// An operation that waits without a thread.
class ConversionQueue::Job : public Waiter, public std::enable_shared_from_this<Job> {
public:
    Job(ConversionQueue &queue, Ticket ticket, Operation operation, Completion completion)
        : m_queue(queue)
        , m_ticket(ticket)
        , m_operation(std::move(operation))
        , m_completion(std::move(completion))
    {
    }

    [[nodiscard]] const std::stop_source &source() const { return m_source; }

    /// From now on a stop takes the job out of the line.
    void dropWhenStopped() { m_dropper.emplace(m_source.get_token(), Dropper{m_queue, m_ticket}); }

    void grant() override
    {
        m_queue.m_threads.post([self = shared_from_this()] { self->run(); });
    }

    void cancel() override
    {
        m_operation = nullptr;
        m_queue.forget(m_ticket);
        m_completion(std::make_exception_ptr(CancellationError()));
    }

private:
    struct Dropper {
        ConversionQueue &queue;
        Ticket ticket;
        void operator()() const { queue.dropWaiter(ticket); }
    };

    void run()
    {
        // Waits for a stop that is just looking for this job in the line; so the lock is free here.
        m_dropper.reset();
        std::exception_ptr failure;
        try {
            m_operation(m_source.get_token());
        } catch (...) {
            failure = std::current_exception();
        }
        m_operation = nullptr;
        m_queue.finish(m_ticket);
        m_completion(std::move(failure));
    }

    ConversionQueue &m_queue;
    const Ticket m_ticket;
    Operation m_operation;
    Completion m_completion;
    std::stop_source m_source;
    std::optional<std::stop_callback<Dropper>> m_dropper;
};

ConversionQueue::ConversionQueue(int maxConcurrent)
    : m_maxConcurrent(maxConcurrent)
    , m_threads(static_cast<std::size_t>(std::max(maxConcurrent, 1)))
{
}

ConversionQueue::~ConversionQueue()
{
    std::map<Ticket, std::stop_source> jobs;
    {
        const std::scoped_lock lock(m_mutex);
        jobs = m_jobs;
    }
    // The last in line first, so that no slot that frees meanwhile starts one that is to go anyway.
    std::for_each(jobs.rbegin(), jobs.rend(), [](auto &job) { job.second.request_stop(); });
}

std::stop_source ConversionQueue::enqueue(Operation operation, Completion completion)
{
    m_threads.prepare();
    const Ticket ticket = ++m_lastTicket;
    const auto job = std::make_shared<Job>(*this, ticket, std::move(operation), std::move(completion));
    std::stop_source source = job->source();
    job->dropWhenStopped();
    Admission admission = Admission::waiting;
    {
        const std::scoped_lock lock(m_mutex);
        m_jobs.emplace_hint(m_jobs.end(), ticket, source);
        admission = admit(ticket, job, source.get_token());
    }
    if (admission == Admission::granted)
        job->grant();
    return source;
}

int ConversionQueue::running() const
{
    const std::scoped_lock lock(m_mutex);
    return m_running;
}

std::size_t ConversionQueue::waiting() const
{
    const std::scoped_lock lock(m_mutex);
    return m_waiting.size();
}

ConversionQueue::Admission ConversionQueue::admit(
    Ticket ticket, const std::shared_ptr<Waiter> &waiter, const std::stop_token &stop)
{
    // A stop that comes later finds the ticket in the line, or the slot granted.
    if (stop.stop_requested())
        return Admission::cancelled;
    if (m_running < m_maxConcurrent && m_waiting.empty()) {
        ++m_running;
        return Admission::granted;
    }
    m_waiting.emplace_hint(m_waiting.end(), ticket, waiter);
    return Admission::waiting;
}

void ConversionQueue::acquire(const std::stop_token &stop)
{
    const Ticket ticket = ++m_lastTicket;
    const auto caller = std::make_shared<BlockedCaller>();
    const std::stop_callback dropper(stop, [this, ticket] { dropWaiter(ticket); });
    Admission admission = Admission::waiting;
    {
        const std::scoped_lock lock(m_mutex);
        admission = admit(ticket, caller, stop);
    }
    switch (admission) {
    case Admission::granted:
        return;
    case Admission::cancelled:
        throw CancellationError();
    case Admission::waiting:
        caller->wait();
    }
}

void ConversionQueue::release()
{
    std::shared_ptr<Waiter> next;
    {
        const std::scoped_lock lock(m_mutex);
        next = passSlotOn();
    }
    if (next)
        next->grant();
}

void ConversionQueue::finish(Ticket ticket)
{
    std::shared_ptr<Waiter> next;
    {
        const std::scoped_lock lock(m_mutex);
        m_jobs.erase(ticket);
        next = passSlotOn();
    }
    if (next)
        next->grant();
}

std::shared_ptr<ConversionQueue::Waiter> ConversionQueue::passSlotOn()
{
    if (m_waiting.empty()) {
        --m_running;
        return nullptr;
    }
    // The slot goes straight to the next in line, so as many run as before.
    std::shared_ptr<Waiter> next = std::move(m_waiting.begin()->second);
    m_waiting.erase(m_waiting.begin());
    return next;
}

void ConversionQueue::dropWaiter(Ticket ticket)
{
    std::shared_ptr<Waiter> waiter;
    {
        const std::scoped_lock lock(m_mutex);
        const auto place = m_waiting.find(ticket);
        // It got its slot a moment earlier, and its operation sees the stop.
        if (place == m_waiting.end())
            return;
        waiter = std::move(place->second);
        m_waiting.erase(place);
    }
    waiter->cancel();
}

void ConversionQueue::forget(Ticket ticket)
{
    const std::scoped_lock lock(m_mutex);
    m_jobs.erase(ticket);
}

} // namespace nolfa
