#pragma once

#include <mupdf/fitz.h>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <stop_token>
#include <thread>

namespace nolfa::mupdf {

/// Has the library give up a page that takes too long, or at once when a stop is requested. One for a document,
/// which works on one page at a time; its thread begins with the first page.
class Watchdog {
public:
    using Clock = std::chrono::steady_clock;

    /// One page's work: the library looks at the cookie as it goes.
    class Watch {
    public:
        Watch(Watchdog &dog, const std::stop_token &stop, Clock::duration limit);
        Watch(const Watch &) = delete;
        Watch &operator=(const Watch &) = delete;
        ~Watch();

        [[nodiscard]] fz_cookie *cookie() noexcept { return &m_dog.m_cookie; }

        /// @throws CancellationError or PlatformError when the work was given up
        void require() const;

    private:
        Watchdog &m_dog;
        const std::stop_token &m_stop;
        std::stop_callback<std::function<void()>> m_onStop;
    };

private:
    void begin(Clock::duration limit);
    void end();
    void watch(const std::stop_token &stop);
    void giveUp() noexcept;

    fz_cookie m_cookie{};
    std::mutex m_mutex;
    std::condition_variable_any m_changed;
    Clock::time_point m_deadline = Clock::time_point::max(); ///< guarded
    std::jthread m_thread;
};

} // namespace nolfa::mupdf
