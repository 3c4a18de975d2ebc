#pragma once

#include "Platform/ChildProcess.h"
#include "Platform/EventSignal.h"

#include <chrono>
#include <list>
#include <mutex>
#include <thread>

namespace nolfa {

/// Sees children to their end whose run is over: SIGKILL for the whole group three seconds after the polite
/// request, and no zombie left. One thread, started with the first such child. Thread-safe.
/// When the process ends, what is left is killed after a last short wait.
class ProcessReaper {
public:
    static ProcessReaper &shared();

    ProcessReaper(const ProcessReaper &) = delete;
    ProcessReaper &operator=(const ProcessReaper &) = delete;

    /// @param child  one that was asked to end (SIGTERM to its group) just now
    void adopt(ChildProcess child);

private:
    using Clock = std::chrono::steady_clock;

    struct Ward {
        ChildProcess child;
        Clock::time_point killTime;
        bool hasEnded = false;
        bool wasKilled = false;
    };

    ProcessReaper();
    ~ProcessReaper();

    void run(const std::stop_token &stop);
    void admit(std::list<Ward> &wards, bool closing);
    void waitForNews(const std::list<Ward> &wards);

    EventSignal m_wake;
    std::mutex m_mutex;
    std::list<Ward> m_arrivals;
    // Last: starts after, and is joined before, everything it touches.
    std::jthread m_thread;
};

} // namespace nolfa
