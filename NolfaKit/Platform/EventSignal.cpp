#include "Platform/EventSignal.h"

#include "Platform/PlatformError.h"

#include <cerrno>
#include <cstring>
#include <sys/eventfd.h>

namespace nolfa {

EventSignal::EventSignal()
    : m_descriptor(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
{
    if (!m_descriptor.isOpen())
        throw PlatformError(std::strerror(errno));
}

void EventSignal::raise() noexcept
{
    // A full counter fails the write, but then the flag is up anyway.
    [[maybe_unused]] const int failed = ::eventfd_write(descriptor(), 1);
}

void EventSignal::lower() noexcept
{
    eventfd_t count = 0;
    [[maybe_unused]] const int failed = ::eventfd_read(descriptor(), &count);
}

} // namespace nolfa
