#include "Nolfa/Support/EndOnSignals.h"

#include <QCoreApplication>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <sys/eventfd.h>
#include <unistd.h>

namespace nolfa {

namespace {

std::atomic<int> wakeDescriptor = -1;
static_assert(std::atomic<int>::is_always_lock_free, "a signal handler reads it");

extern "C" void askToEnd(int /*signal*/)
{
    const int before = errno;
    const std::uint64_t one = 1;
    [[maybe_unused]] const ssize_t written = ::write(wakeDescriptor, &one, sizeof one);
    errno = before;
}

} // namespace

EndOnSignals::EndOnSignals()
    : m_wake(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
    , m_notifier(m_wake.get(), QSocketNotifier::Read)
{
    QObject::connect(&m_notifier, &QSocketNotifier::activated, &m_notifier, [this] {
        m_notifier.setEnabled(false);
        QCoreApplication::quit();
    });
    wakeDescriptor = m_wake.get();
    struct sigaction action = {};
    action.sa_handler = askToEnd;
    action.sa_flags = SA_RESTART | SA_RESETHAND;
    ::sigemptyset(&action.sa_mask);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        ::sigaction(signal, &action, nullptr);
}

} // namespace nolfa
