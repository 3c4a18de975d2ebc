#pragma once

#include "Platform/EventSignal.h"

#include <csignal>
#include <stop_token>
#include <thread>

namespace nolfa {

/// Turns Ctrl-C, and the other polite requests to end, into a stop token for a program without an event loop.
/// Make one at the start, before any other thread, so that all threads inherit the blocked signals.
/// The first signal requests the stop; a second one ends the process at once.
class InterruptSignals {
public:
    /// @throws PlatformError
    InterruptSignals();
    InterruptSignals(const InterruptSignals &) = delete;
    InterruptSignals &operator=(const InterruptSignals &) = delete;
    ~InterruptSignals();

    [[nodiscard]] std::stop_token token() const { return m_source.get_token(); }
    [[nodiscard]] bool happened() const { return m_source.stop_requested(); }

private:
    void run(const std::stop_token &stop);

    FileDescriptor m_signals;
    EventSignal m_wake;
    std::stop_source m_source;
    // Last: starts after, and is joined before, everything it touches.
    std::jthread m_thread;
};

} // namespace nolfa
