#include "Platform/MuPDF/Watchdog.h"

#include "Platform/CancellationError.h"
#include "Platform/PlatformError.h"

#include <atomic>

namespace nolfa::mupdf {

namespace {

/// How late a limit may be noticed.
constexpr std::chrono::milliseconds period(100);

} // namespace

Watchdog::Watch::Watch(Watchdog &dog, const std::stop_token &stop, Clock::duration limit)
    : m_dog((dog.begin(limit), dog))
    , m_stop(stop)
    , m_onStop(stop, [&dog] { dog.giveUp(); })
{
}

Watchdog::Watch::~Watch()
{
    m_dog.end();
}

void Watchdog::Watch::require() const
{
    if (m_stop.stop_requested())
        throw CancellationError();
    if (std::atomic_ref(m_dog.m_cookie.abort).load() != 0)
        throw PlatformError("The page takes too long.");
}

void Watchdog::begin(Clock::duration limit)
{
    const std::scoped_lock lock(m_mutex);
    m_cookie = {};
    m_deadline = Clock::now() + limit;
    if (!m_thread.joinable())
        m_thread = std::jthread([this](const std::stop_token &stop) { watch(stop); });
}

void Watchdog::end()
{
    const std::scoped_lock lock(m_mutex);
    m_deadline = Clock::time_point::max();
}

void Watchdog::watch(const std::stop_token &stop)
{
    std::unique_lock lock(m_mutex);
    while (!stop.stop_requested()) {
        if (Clock::now() >= m_deadline)
            giveUp();
        m_changed.wait_for(lock, stop, period, [] { return false; });
    }
}

void Watchdog::giveUp() noexcept
{
    // The library reads it as it goes, without a lock.
    std::atomic_ref(m_cookie.abort).store(1);
}

} // namespace nolfa::mupdf
