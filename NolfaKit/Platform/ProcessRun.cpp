#include "Platform/ProcessRun.h"

#include "Platform/EventSignal.h"
#include "Platform/ProcessReaper.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <limits>
#include <poll.h>
#include <pthread.h>

namespace nolfa {

namespace {

using namespace std::chrono_literals;

/// How long a stopped child may keep the caller.
constexpr std::chrono::milliseconds courtesyTime = 10ms;
constexpr std::size_t chunkSize = 1U << 16U;
/// A child that writes a few bytes at a time would wake us for each: after so few we let more gather, for so long.
/// Its end wakes us at once.
constexpr std::size_t trickleSize = 1U << 12U;
constexpr int gatheringTime = 1; // milliseconds

/// Writing to a child that doesn't read must fail, not kill us: SIGPIPE is held back for this thread only, and
/// one that came is taken away again.
class BrokenPipeGuard {
public:
    BrokenPipeGuard()
    {
        ::sigemptyset(&m_pipe);
        ::sigaddset(&m_pipe, SIGPIPE);
        ::pthread_sigmask(SIG_BLOCK, &m_pipe, &m_before);
    }
    BrokenPipeGuard(const BrokenPipeGuard &) = delete;
    BrokenPipeGuard &operator=(const BrokenPipeGuard &) = delete;
    ~BrokenPipeGuard()
    {
        const timespec now{};
        while (::sigtimedwait(&m_pipe, nullptr, &now) > 0) { }
        ::pthread_sigmask(SIG_SETMASK, &m_before, nullptr);
    }

private:
    sigset_t m_pipe{};
    sigset_t m_before{};
};

bool isPassing(int errorNumber)
{
    return errorNumber == EAGAIN || errorNumber == EINTR;
}

} // namespace

ProcessRun::ProcessRun(const std::filesystem::path &executable, const std::vector<std::string> &arguments,
    std::optional<std::string_view> input, const std::optional<std::filesystem::path> &currentDirectory,
    const std::vector<std::string> &environment, std::chrono::duration<double> limit)
    : m_input(input.value_or(std::string_view()))
    , m_limit(limit)
    , m_child(ChildProcess::start(executable, arguments, currentDirectory, environment,
          input ? ChildProcess::Input::piped : ChildProcess::Input::inherited))
{
    if (m_input.empty())
        m_child.input.reset();
    if (!m_child.input.isOpen())
        startTimer();
}

ProcessRun::Ending ProcessRun::wait(const std::stop_token &stop)
{
    EventSignal stopSignal;
    const std::stop_callback onStop(stop, [&stopSignal] { stopSignal.raise(); });
    const BrokenPipeGuard guard;

    bool isGathering = false;
    while (!isOver()) {
        std::array<pollfd, 5> events{{{stopSignal.descriptor(), POLLIN, 0},
            {isGathering ? -1 : m_child.output.get(), POLLIN, 0}, {isGathering ? -1 : m_child.error.get(), POLLIN, 0},
            {m_child.input.get(), POLLOUT, 0}, {m_hasEnded ? -1 : m_child.endDescriptor(), POLLIN, 0}}};
        if (::poll(events.data(), events.size(), pollTimeout(isGathering)) < 0)
            continue;
        if (events[0].revents != 0) {
            interrupt();
            return Ending::cancelled;
        }
        if (m_deadline && Clock::now() >= *m_deadline) {
            interrupt();
            return Ending::timedOut;
        }
        std::size_t received = 0;
        if (events[1].revents != 0)
            received += read(m_child.output, m_output);
        if (events[2].revents != 0)
            received += read(m_child.error, m_error);
        isGathering = received > 0 && received < trickleSize && !m_hasEnded;
        if (events[3].revents != 0)
            feed();
        if (events[4].revents != 0)
            m_hasEnded = true;
    }
    m_status = m_child.reap();
    return Ending::exited;
}

bool ProcessRun::isOver() const noexcept
{
    return m_hasEnded && !m_child.output.isOpen() && !m_child.error.isOpen();
}

int ProcessRun::pollTimeout(bool isGathering) const
{
    const int longest = isGathering ? gatheringTime : std::numeric_limits<int>::max();
    if (!m_deadline)
        return isGathering ? longest : -1;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(*m_deadline - Clock::now()).count();
    return static_cast<int>(std::clamp<std::int64_t>(left, 0, longest));
}

void ProcessRun::startTimer()
{
    // Limits of centuries stand for none.
    constexpr std::chrono::duration<double> longest = std::chrono::hours(24 * 365 * 100);
    m_deadline = Clock::now() + std::chrono::duration_cast<Clock::duration>(std::min(m_limit, longest));
}

void ProcessRun::feed()
{
    const ssize_t count = ::write(m_child.input.get(), m_input.data(), m_input.size());
    if (count > 0)
        m_input.remove_prefix(static_cast<std::size_t>(count));
    if (count < 0 && isPassing(errno))
        return;
    if (count < 0 || m_input.empty()) {
        m_child.input.reset();
        startTimer();
    }
}

std::size_t ProcessRun::read(FileDescriptor &stream, std::string &into)
{
    std::array<char, chunkSize> chunk; // NOLINT: filled by read
    const ssize_t count = ::read(stream.get(), chunk.data(), chunk.size());
    if (count == 0 || (count < 0 && !isPassing(errno)))
        stream.reset();
    const std::size_t received = count > 0 ? static_cast<std::size_t>(count) : 0;
    into.append(chunk.data(), received);
    return received;
}

void ProcessRun::interrupt()
{
    m_child.signalGroup(SIGTERM);
    pollfd end{m_child.endDescriptor(), POLLIN, 0};
    ::poll(&end, 1, static_cast<int>(courtesyTime.count()));
    ProcessReaper::shared().adopt(std::move(m_child));
}

} // namespace nolfa
