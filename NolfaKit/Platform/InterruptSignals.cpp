#include "Platform/InterruptSignals.h"

#include "Platform/PlatformError.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <poll.h>
#include <pthread.h>
#include <sys/signalfd.h>

namespace nolfa {

namespace {

constexpr int interruptedStatus = 130;

FileDescriptor blockAndOpen()
{
    sigset_t signals;
    ::sigemptyset(&signals);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        ::sigaddset(&signals, signal);
    ::pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    FileDescriptor descriptor(::signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK));
    if (!descriptor.isOpen())
        throw PlatformError(std::strerror(errno));
    return descriptor;
}

} // namespace

InterruptSignals::InterruptSignals()
    : m_signals(blockAndOpen())
    , m_thread([this](const std::stop_token &stop) { run(stop); })
{
}

InterruptSignals::~InterruptSignals()
{
    m_thread.request_stop();
    m_wake.raise();
}

void InterruptSignals::run(const std::stop_token &stop)
{
    while (!stop.stop_requested()) {
        std::array<pollfd, 2> events{{{m_signals.get(), POLLIN, 0}, {m_wake.descriptor(), POLLIN, 0}}};
        ::poll(events.data(), events.size(), -1);
        signalfd_siginfo received{};
        if (::read(m_signals.get(), &received, sizeof received) != static_cast<ssize_t>(sizeof received))
            continue;
        if (!m_source.request_stop())
            ::_exit(interruptedStatus);
    }
}

} // namespace nolfa
