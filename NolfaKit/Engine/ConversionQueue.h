#pragma once

#include "Engine/WorkerThreads.h"
#include "Platform/CancellationError.h"

#include <atomic>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <stop_token>
#include <utility>

namespace nolfa {

/// Limits how many operations run at once: a counting semaphore that hands out its slots strictly first in, first
/// out, and whose waiters can be cancelled. It knows nothing of conversions. Thread-safe.
///
/// Waiting costs no thread with enqueue(), and the caller's with run(); both stand in the same line. Waiting has no
/// time limit. Destruction cancels whoever waits, stops what enqueue() started and waits for it to end; run() must
/// not be under way.
class ConversionQueue {
public:
    using Operation = std::function<void(const std::stop_token &stop)>;
    /// Takes the operation's failure, a CancellationError if it was never started, or null. Must not throw.
    using Completion = std::function<void(std::exception_ptr failure)>;

    /// @param maxConcurrent  the number of slots; with 0 or less everybody waits for ever
    explicit ConversionQueue(int maxConcurrent);
    ConversionQueue(const ConversionQueue &) = delete;
    ConversionQueue &operator=(const ConversionQueue &) = delete;
    ~ConversionQueue();

    /// Waits for a slot, runs @p operation on the calling thread, gives the slot back, and returns what it returned.
    /// @param operation  takes the stop token
    /// @throws CancellationError when @p stop came before the slot; else the operation's own failure, unchanged.
    template <std::invocable<const std::stop_token &> Work> auto run(Work &&operation, const std::stop_token &stop)
    {
        acquire(stop);
        const Slot slot{*this};
        return std::forward<Work>(operation)(stop);
    }

    /// Lines @p operation up to run on a thread of the queue, and returns at once.
    /// @param completion  called exactly once, when the slot was given back: on the queue's thread, or, for an
    ///                    operation that was cancelled while it waited, on the thread that cancelled it
    /// @return its stop cancels the wait, or reaches the operation as its token
    /// @throws std::system_error when the system has no thread to give; nothing is called then.
    [[nodiscard]] std::stop_source enqueue(Operation operation, Completion completion);

    /// How many slots are in use. For tests, like waiting(): what it says may be over when it is read.
    [[nodiscard]] int running() const;
    [[nodiscard]] std::size_t waiting() const;

private:
    /// Who stands in line. Both calls come from any thread, without the lock, and only one of them, once.
    class Waiter {
    public:
        Waiter() = default;
        Waiter(const Waiter &) = delete;
        Waiter &operator=(const Waiter &) = delete;
        virtual ~Waiter() = default;
        virtual void grant() = 0;
        virtual void cancel() = 0;
    };
    class BlockedCaller;
    class Job;
    using Ticket = std::uint64_t;
    struct Slot {
        ConversionQueue &queue;
        ~Slot() { queue.release(); }
    };
    enum class Admission { granted, waiting, cancelled };

    /// Call it with the lock held.
    Admission admit(Ticket ticket, const std::shared_ptr<Waiter> &waiter, const std::stop_token &stop);
    void acquire(const std::stop_token &stop);
    void release();
    /// Call it with the lock held, and grant the slot to who comes back, without it.
    [[nodiscard]] std::shared_ptr<Waiter> passSlotOn();
    void finish(Ticket ticket);
    void dropWaiter(Ticket ticket);
    void forget(Ticket ticket);

    const int m_maxConcurrent;
    std::atomic<Ticket> m_lastTicket = 0;
    mutable std::mutex m_mutex; ///< guards all that follows but the threads; never held across a call out
    int m_running = 0;
    /// Tickets rise, so the order of the keys is that of arrival.
    std::map<Ticket, std::shared_ptr<Waiter>> m_waiting;
    /// What enqueue() took in and hasn't ended.
    std::map<Ticket, std::stop_source> m_jobs;
    /// Last: ends before what its jobs touch.
    WorkerThreads m_threads;
};

} // namespace nolfa
