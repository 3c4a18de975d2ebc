#include "Platform/MuPDF/Context.h"

#include "Platform/PlatformError.h"

#include <array>
#include <cstdlib>
#include <malloc.h>
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

fz_alloc_context MemoryQuota::allocator() noexcept
{
    return {this, allocate, reallocate, release};
}

void *MemoryQuota::allocate(void *quota, std::size_t size)
{
    return reallocate(quota, nullptr, size);
}

void *MemoryQuota::reallocate(void *quota, void *block, std::size_t size)
{
    std::size_t &left = static_cast<MemoryQuota *>(quota)->m_left;
    const std::size_t before = block == nullptr ? 0 : malloc_usable_size(block);
    if (size > left + before)
        return nullptr;
    void *result = std::realloc(block, size);
    if (result != nullptr) {
        const std::size_t after = malloc_usable_size(result);
        left += before;
        left -= after < left ? after : left;
    }
    return result;
}

void MemoryQuota::release(void *quota, void *block)
{
    if (block != nullptr)
        static_cast<MemoryQuota *>(quota)->m_left += malloc_usable_size(block);
    std::free(block);
}

Context::Context(std::size_t cacheSize, std::size_t quota)
    : m_quota(std::make_unique<MemoryQuota>(quota))
{
    const fz_alloc_context allocator = m_quota->allocator();
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
