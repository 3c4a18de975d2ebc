#include "Platform/MuPDF/Context.h"

#include "Platform/PlatformError.h"

#include <array>
#include <mutex>

namespace nolfa::mupdf {

namespace {

std::mutex fontLock;

// Of the library's locks only the one around FreeType guards something that contexts share here: the allocator is
// thread-safe, and every context has a cache of its own.
void lock(void * /*user*/, int lock)
{
    if (lock == FZ_LOCK_FREETYPE)
        fontLock.lock();
}

void unlock(void * /*user*/, int lock)
{
    if (lock == FZ_LOCK_FREETYPE)
        fontLock.unlock();
}

constexpr fz_locks_context locks{nullptr, lock, unlock};

void ignoreMessage(void * /*user*/, const char * /*message*/) { }

} // namespace

Context::Context(std::size_t cacheSize, std::size_t quota)
    : m_heap(std::make_unique<Heap>(quota))
{
    const fz_alloc_context allocator = m_heap->allocator();
    m_context = fz_new_context(&allocator, &locks, cacheSize);
    if (m_context == nullptr)
        throw PlatformError("no context for PDF");
    fz_set_warning_callback(m_context, ignoreMessage, nullptr);
    fz_set_error_callback(m_context, ignoreMessage, nullptr);
}

Context::~Context()
{
    fz_drop_context(m_context);
}

void Context::run(void (*work)(fz_context *, void *), void *argument) const
{
    std::array<char, 256> message{};
    if (nolfa_mupdf_guard(m_context, work, argument, message.data(), message.size()) != FZ_ERROR_NONE)
        throw PlatformError(message.data());
}

} // namespace nolfa::mupdf
