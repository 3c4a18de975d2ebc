#include "Engine/TimeLimit.h"

#include <chrono>
#include <cmath>
#include <condition_variable>
#include <cstdlib>
#include <mutex>
#include <thread>

namespace nolfa::TimeLimit {

namespace {

using Clock = std::chrono::steady_clock;

/// A span whose nanoseconds, truncated, are an unsigned 64-bit number.
bool isTimeSpan(double seconds)
{
    constexpr double nanosecondsPerSecond = 1e9;
    constexpr double tooMany = 18446744073709551616.0;
    const double nanoseconds = seconds * nanosecondsPerSecond;
    return std::isfinite(seconds) && nanoseconds > -1 && nanoseconds < tooMany;
}

Clock::time_point deadlineAfter(double seconds)
{
    // The clock ends before an unsigned count of nanoseconds does.
    const std::chrono::duration<double> left = Clock::time_point::max() - Clock::now();
    const std::chrono::duration<double> span(std::trunc(seconds * 1e9) / 1e9);
    if (span >= left)
        return Clock::time_point::max();
    return Clock::now() + std::chrono::duration_cast<Clock::duration>(span);
}

} // namespace

Outcome race(double seconds, const std::stop_token &stop, const std::function<void(const std::stop_token &)> &operation)
{
    if (!isTimeSpan(seconds))
        std::abort();
    const Clock::time_point deadline = deadlineAfter(seconds);
    std::mutex mutex;
    std::condition_variable_any changed;
    bool hasFinished = false;
    Outcome outcome = Outcome::finished;
    // A stop that came before is there when the operation begins, and decides however soon that ends. A later one is
    // passed on once it has decided.
    std::stop_source operationStop;
    const bool cameBefore = stop.stop_requested();
    if (cameBefore)
        operationStop.request_stop();
    // Leaving the block waits for the worker.
    std::jthread worker([&] {
        operation(operationStop.get_token());
        const std::scoped_lock lock(mutex);
        hasFinished = true;
        changed.notify_one();
    });
    {
        std::unique_lock lock(mutex);
        if (!changed.wait_until(lock, stop, deadline, [&hasFinished] { return hasFinished; }))
            outcome = stop.stop_requested() ? Outcome::cancelled : Outcome::timedOut;
    }
    if (cameBefore)
        outcome = Outcome::cancelled;
    if (outcome != Outcome::finished)
        operationStop.request_stop();
    worker.join();
    return outcome;
}

} // namespace nolfa::TimeLimit
