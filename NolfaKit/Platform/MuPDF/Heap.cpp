#include "Platform/MuPDF/Heap.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace nolfa::mupdf {

namespace {

constexpr std::size_t slabSize = 256U << 10U;

#if defined(__SANITIZE_ADDRESS__)
// Every block by itself, so that none is used after its end or beyond it unseen.
constexpr bool areSmallOnesCut = false;
#else
constexpr bool areSmallOnesCut = true;
#endif

} // namespace

Heap::~Heap()
{
    for (void *slab : m_slabs)
        std::free(slab);
}

fz_alloc_context Heap::allocator() noexcept
{
    return {this, [](void *heap, std::size_t size) { return static_cast<Heap *>(heap)->allocate(size); },
        [](void *heap, void *memory, std::size_t size) { return static_cast<Heap *>(heap)->reallocate(memory, size); },
        [](void *heap, void *memory) { static_cast<Heap *>(heap)->release(memory); }};
}

void *Heap::allocate(std::size_t size) noexcept
{
    if (size > m_left)
        return nullptr;
    const std::size_t whole = (size + sizeof(Header) + step - 1) / step * step;
    Header *const block = areSmallOnesCut && whole <= largestSmall ? small(whole) : large(whole);
    return block == nullptr ? nullptr : block + 1;
}

void *Heap::reallocate(void *memory, std::size_t size) noexcept
{
    if (memory == nullptr)
        return allocate(size);
    const std::size_t before = (static_cast<Header *>(memory) - 1)->size - sizeof(Header);
    if (size <= before && size > before / 2)
        return memory;
    void *const moved = allocate(size);
    if (moved == nullptr)
        return nullptr;
    std::memcpy(moved, memory, std::min(size, before));
    release(memory);
    return moved;
}

void Heap::release(void *memory) noexcept
{
    if (memory == nullptr)
        return;
    Header *const block = static_cast<Header *>(memory) - 1;
    if (areSmallOnesCut && block->size <= largestSmall) {
        Free *&first = m_free[block->size / step];
        first = new (memory) Free{first};
        return;
    }
    m_left += block->size;
    std::free(block);
}

Heap::Header *Heap::small(std::size_t size) noexcept
{
    if (Free *&first = m_free[size / step]; first != nullptr) {
        Header *const block = reinterpret_cast<Header *>(first) - 1;
        first = first->next;
        return block;
    }
    if (size > m_leftInSlab) {
        void *const slab = slabSize > m_left ? nullptr : std::malloc(slabSize);
        if (slab == nullptr)
            return nullptr;
        m_slabs.push_back(slab);
        m_left -= slabSize;
        m_next = static_cast<std::byte *>(slab);
        m_leftInSlab = slabSize;
    }
    auto *const block = new (m_next) Header{size};
    m_next += size;
    m_leftInSlab -= size;
    return block;
}

Heap::Header *Heap::large(std::size_t size) noexcept
{
    void *const block = size > m_left ? nullptr : std::malloc(size);
    if (block == nullptr)
        return nullptr;
    m_left -= size;
    return new (block) Header{size};
}

} // namespace nolfa::mupdf
