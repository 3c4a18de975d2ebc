#include "Platform/ProcessReaper.h"

#include <algorithm>
#include <csignal>
#include <poll.h>
#include <vector>

namespace nolfa {

namespace {

using namespace std::chrono_literals;

constexpr auto politeTime = 3s;
/// What a child started is asked to end together with it; once the child is gone nobody waits for the rest.
constexpr auto orphanTime = 100ms;
/// At the end of the process nobody has three seconds to spare.
constexpr auto closingTime = 200ms;

bool hasEnded(const ChildProcess &child)
{
    pollfd end{child.endDescriptor(), POLLIN, 0};
    return ::poll(&end, 1, 0) > 0;
}

} // namespace

ProcessReaper &ProcessReaper::shared()
{
    static ProcessReaper reaper;
    return reaper;
}

ProcessReaper::ProcessReaper()
    : m_thread([this](const std::stop_token &stop) { run(stop); })
{
}

ProcessReaper::~ProcessReaper()
{
    m_thread.request_stop();
    m_wake.raise();
}

void ProcessReaper::adopt(ChildProcess child)
{
    {
        const std::scoped_lock lock(m_mutex);
        m_arrivals.push_back({std::move(child), Clock::now() + politeTime});
    }
    m_wake.raise();
}

void ProcessReaper::run(const std::stop_token &stop)
{
    std::list<Ward> wards;
    for (;;) {
        const bool closing = stop.stop_requested();
        admit(wards, closing);
        const auto now = Clock::now();
        std::erase_if(wards, [now](Ward &ward) {
            if (!ward.hasEnded && hasEnded(ward.child)) {
                ward.hasEnded = true;
                ward.killTime = std::min(ward.killTime, now + orphanTime);
            }
            if (now >= ward.killTime && !ward.wasKilled) {
                ward.child.signalGroup(SIGKILL);
                ward.wasKilled = true;
            }
            // Reaped only now: as long as the leader is a zombie its group's number can't be anybody else's.
            const bool isDone = ward.hasEnded && ward.wasKilled;
            if (isDone)
                ward.child.reap();
            return isDone;
        });
        if (closing && wards.empty())
            return;
        waitForNews(wards);
    }
}

void ProcessReaper::admit(std::list<Ward> &wards, bool closing)
{
    const std::scoped_lock lock(m_mutex);
    wards.splice(wards.end(), m_arrivals);
    if (closing) {
        for (Ward &ward : wards)
            ward.killTime = std::min(ward.killTime, Clock::now() + closingTime);
    }
}

void ProcessReaper::waitForNews(const std::list<Ward> &wards)
{
    std::vector<pollfd> events{{m_wake.descriptor(), POLLIN, 0}};
    int timeout = -1;
    for (const Ward &ward : wards) {
        if (!ward.hasEnded)
            events.push_back({ward.child.endDescriptor(), POLLIN, 0});
        if (!ward.wasKilled) {
            const auto left = std::chrono::ceil<std::chrono::milliseconds>(ward.killTime - Clock::now()).count();
            const int wait = static_cast<int>(std::max<std::int64_t>(left, 0));
            timeout = timeout < 0 ? wait : std::min(timeout, wait);
        }
    }
    ::poll(events.data(), events.size(), timeout);
    m_wake.lower();
}

} // namespace nolfa
