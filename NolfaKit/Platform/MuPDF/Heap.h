#pragma once

#include <mupdf/fitz.h>

#include <array>
#include <cstddef>
#include <vector>

namespace nolfa::mupdf {

/// The memory of one context, which belongs to one thread at a time: small blocks are cut from large ones and handed
/// out again without a lock, which is most of what reading a page asks for. Bounded: a file that claims more fails
/// instead of taking the machine's memory. What is still out is released with the object.
class Heap {
public:
    /// @param limit  bytes in all
    explicit Heap(std::size_t limit) noexcept
        : m_left(limit)
    {
    }
    Heap(const Heap &) = delete;
    Heap &operator=(const Heap &) = delete;
    ~Heap();

    [[nodiscard]] fz_alloc_context allocator() noexcept;

private:
    /// In front of every block, and as large as the strictest alignment.
    struct alignas(std::max_align_t) Header {
        std::size_t size; ///< of the whole block, this included
    };
    /// What a free block holds.
    struct Free {
        Free *next;
    };

    static constexpr std::size_t step = 32;
    static constexpr std::size_t largestSmall = 1024;

    void *allocate(std::size_t size) noexcept;
    void *reallocate(void *memory, std::size_t size) noexcept;
    void release(void *memory) noexcept;

    Header *small(std::size_t size) noexcept;
    Header *large(std::size_t size) noexcept;

    std::size_t m_left;
    std::array<Free *, largestSmall / step + 1> m_free{}; ///< by size in steps
    std::vector<void *> m_slabs;
    std::byte *m_next = nullptr; ///< in the last slab
    std::size_t m_leftInSlab = 0;
};

} // namespace nolfa::mupdf
